#include "app/settings.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    // The settings and the language of the user who runs the tests must be neither read nor changed.
    const QTemporaryDir settings;
    Settings::useFolder(settings.path());
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");
    qunsetenv("LANGUAGE");

    testing::InitGoogleTest(&argc, argv);
    QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(QStringLiteral("Lumvale Tests"));
    QCoreApplication::setApplicationName(QStringLiteral("Tests"));
    return RUN_ALL_TESTS();
}
