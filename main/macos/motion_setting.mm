#include "main/motion_setting.h"

#include "ui/style/reduced_motion.h"

#import <AppKit/AppKit.h>

void MotionSetting::follow() {
    NSWorkspace* const workspace = NSWorkspace.sharedWorkspace;
    void (^const update)(NSNotification*) = ^(NSNotification*) {
      ReducedMotion::shared().setRequested(workspace.accessibilityDisplayShouldReduceMotion);
    };
    update(nil);
    [workspace.notificationCenter
        addObserverForName:NSWorkspaceAccessibilityDisplayOptionsDidChangeNotification
                    object:nil
                     queue:NSOperationQueue.mainQueue
                usingBlock:update];
}
