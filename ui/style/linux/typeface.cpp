#include "ui/style/typeface.h"

#include <QFontDatabase>
#include <QGuiApplication>

void Typeface::setApplicationFont() {
    // The screens were designed with Inter; otherwise the system font is used.
    if (QFontDatabase::hasFamily(QStringLiteral("Inter")))
        QGuiApplication::setFont(QFont(QStringLiteral("Inter")));
}

QString Typeface::title() {
    return QGuiApplication::font().family();
}
