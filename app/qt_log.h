#pragma once

/// Keeps the toolkit from printing what is no event of this program: a broken picture, a machine that can't
/// speak TLS. From any thread; once is enough, and more does no harm.
void silenceQt();
