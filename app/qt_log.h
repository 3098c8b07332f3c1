#pragma once

/// Disables Qt's log messages about damaged images and missing TLS support, which the program handles itself.
/// Any thread; further calls have no effect.
void silenceQt();
