#pragma once

/// The desktop's setting for reduced motion.
namespace MotionSetting {

/// Passes the setting and its changes to ReducedMotion. Doesn't wait for the desktop's answer; without one,
/// motion isn't reduced. Requires the application object.
void follow();

} // namespace MotionSetting
