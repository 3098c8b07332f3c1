#include "main/desktop.h"

#include "app/i18n/localizer.h"
#include "app/identity.h"

#include <utility>

#import <AppKit/AppKit.h>

namespace {

NSString* text(const QString& key) {
    return tr(key).replace(QStringLiteral("%1"), Identity::name()).toNSString();
}

/// Sets the titles of a menu's items by their actions. Qt's application menu has English titles otherwise.
void translate(NSMenu* menu) {
    const std::pair<SEL, QString> keys[]{
        {@selector(hide:), QStringLiteral("menu_hide")},
        {@selector(hideOtherApplications:), QStringLiteral("menu_hide_others")},
        {@selector(unhideAllApplications:), QStringLiteral("menu_show_all")},
        {@selector(terminate:), QStringLiteral("menu_quit")},
        {@selector(performClose:), QStringLiteral("menu_close")},
        {@selector(performMiniaturize:), QStringLiteral("menu_minimize")},
    };
    for (NSMenuItem* const item in menu.itemArray) {
        for (const auto& [action, key] : keys)
            if (item.action == action)
                item.title = text(key);
        if (item.submenu == NSApp.servicesMenu && item.submenu)
            item.title = text(QStringLiteral("menu_services"));
    }
}

NSMenu* windowMenu() {
    NSMenu* const menu = [[NSMenu alloc] init];
    [menu addItemWithTitle:@"" action:@selector(performMiniaturize:) keyEquivalent:@"m"];
    [menu addItemWithTitle:@"" action:@selector(performClose:) keyEquivalent:@"w"];
    return menu;
}

} // namespace

void Desktop::setUp() {
    // All screens are dark.
    NSApp.appearance = [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua];

    // Qt has created the application menu with Services, Hide and Quit.
    NSMenu* const bar = NSApp.mainMenu ?: NSApp.menu;
    NSMenu* const ofApplication = bar.itemArray.firstObject.submenu;
    NSMenu* const ofWindows = windowMenu();
    [bar addItemWithTitle:@"" action:nil keyEquivalent:@""].submenu = ofWindows;
    NSApp.windowsMenu = ofWindows; // the system adds its own items and the open windows

    const auto translateMenus = [=] {
        ofWindows.title = text(QStringLiteral("menu_window"));
        translate(ofWindows);
        translate(ofApplication);
    };
    translateMenus();
    QObject::connect(&Localizer::shared(), &Localizer::languageChanged, translateMenus);
}

bool Desktop::isMac() {
    return true;
}

void Desktop::bringToFront() {
    // Qt makes the window the active one of the program, which may still lie behind others.
    [NSApp activateIgnoringOtherApps:YES];
}
