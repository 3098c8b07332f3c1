// Drives the program through all of its states with mouse clicks, on the disk given by LUMVALE_DISK and
// LUMVALE_HOME. Saves pictures of each state, prints the deletions, and fails if texts are cut or overlap.
// The deletions are real: use a copy or a sample disk.

#include "platform/files/mac_disks.h"
#include "tests/ui/driver.h"
#include "tools/tour/expect.h"
#include "tools/tour/tour.h"

#include <QCommandLineParser>
#include <QDir>
#include <QGuiApplication>

#include <cstdio>
#include <optional>
#include <vector>

namespace {

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
    parser.addOption({"check", "Only check the texts; save no pictures, and expect no FOLDER."});
    parser.addPositionalArgument("folder", "Folder for the pictures.", "[FOLDER]");
    parser.addPositionalArgument("languages", "Languages of the interface; en and fr by default.",
                                 "[LANGUAGE…]");
    parser.process(application);
    QStringList arguments = parser.positionalArguments();
    std::optional<QDir> pictures;
    if (!parser.isSet("check")) {
        if (arguments.isEmpty())
            parser.showHelp(EXIT_FAILURE);
        pictures = QDir(arguments.takeFirst());
        expect(pictures->mkpath("."), "the folder for the pictures is created");
    }

    if (qEnvironmentVariableIsEmpty("LUMVALE_DISK") || qEnvironmentVariableIsEmpty("LUMVALE_HOME"))
        fail("set LUMVALE_DISK and LUMVALE_HOME");
    const auto disk = platform::openMacDisk(qEnvironmentVariable("LUMVALE_DISK").toStdString(),
                                            qEnvironmentVariable("LUMVALE_HOME").toStdString());
    if (!disk)
        fail(disk.error().description);

    Tour tour(*disk, pictures);
    QStringList problems;
    for (const AppLanguage language : languages(arguments))
        problems += tour.run(language);
    if (pictures)
        std::printf("The pictures are in %s\n", qPrintable(pictures->absolutePath()));
    expect(problems.isEmpty(), "no text is cut or overlaps another:\n" + problems.join('\n').toStdString());
}
