// Drives the real program through all screens with mouse clicks, on the disk given by LUMVALE_DISK and
// LUMVALE_HOME. Saves a picture of each state and prints the deletions. The deletions are real: use a copy or
// a sample disk.

#include "platform/files/mac_disks.h"
#include "tests/ui/driver.h"
#include "tools/tour/expect.h"
#include "tools/tour/tour.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>

#include <cstdio>
#include <vector>

namespace {

/// Returns the size written as WIDTHxHEIGHT, and an invalid one for an empty text.
QSize windowSize(const QString& text) {
    if (text.isEmpty())
        return {};
    const QStringList sides = text.split('x');
    const QSize size(sides.value(0).toInt(), sides.value(1).toInt());
    expect(sides.size() == 2 && !size.isEmpty(), text.toStdString() + " is a size");
    return size;
}

std::vector<AppLanguage> languages(const QStringList& names) {
    if (names.isEmpty())
        return {AppLanguage::en, AppLanguage::fr};
    std::vector<AppLanguage> languages;
    for (const QString& name : names) {
        languages.push_back(appLanguage(name).value_or(AppLanguage::automatic));
        expect(languages.back() != AppLanguage::automatic, name.toStdString() + " is a language");
    }
    return languages;
}

} // namespace

int main(int argc, char** argv) {
    const OwnSettings settings;
    const QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOption({"size", "Size of the window.", "WIDTHxHEIGHT"});
    parser.addPositionalArgument("folder", "Folder for the pictures.", "FOLDER");
    parser.addPositionalArgument("languages", "Languages of the interface; en and fr by default.",
                                 "[LANGUAGE…]");
    parser.process(application);
    QStringList arguments = parser.positionalArguments();
    if (arguments.isEmpty())
        parser.showHelp(EXIT_FAILURE);

    if (qEnvironmentVariableIsEmpty("LUMVALE_DISK") || qEnvironmentVariableIsEmpty("LUMVALE_HOME"))
        fail("set LUMVALE_DISK and LUMVALE_HOME");
    const auto disk = platform::openMacDisk(qEnvironmentVariable("LUMVALE_DISK").toStdString(),
                                            qEnvironmentVariable("LUMVALE_HOME").toStdString());
    if (!disk)
        fail(disk.error().description);
    const QDir pictures(arguments.takeFirst());
    expect(pictures.mkpath("."), "the folder for the pictures is created");

    Tour tour(*disk, pictures, windowSize(parser.value("size")));
    for (const AppLanguage language : languages(arguments))
        tour.run(language);
    std::printf("The pictures are in %s\n", qPrintable(pictures.absolutePath()));
}
