#include "ui/style/typeface.h"

#include <QFontDatabase>
#include <QGuiApplication>

#import <AppKit/AppKit.h>

void Typeface::setApplicationFont() {
    // Qt's default is the system's font.
}

QString Typeface::title() {
    static const QString family = [] {
        NSFontDescriptor* const descriptor = [[NSFont systemFontOfSize:NSFont.systemFontSize].fontDescriptor
            fontDescriptorWithDesign:NSFontDescriptorSystemDesignRounded];
        NSFont* const rounded = descriptor ? [NSFont fontWithDescriptor:descriptor size:0] : nil;
        // Qt's font database leaves out the families that the system hides, but loads any font file.
        NSURL* const file =
            rounded ? CFBridgingRelease(CTFontCopyAttribute((__bridge CTFontRef)rounded, kCTFontURLAttribute))
                    : nil;
        const int font = QFontDatabase::addApplicationFont(QString::fromNSString(file.path));
        return QFontDatabase::applicationFontFamilies(font).value(0, QGuiApplication::font().family());
    }();
    return family;
}
