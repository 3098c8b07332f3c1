#include "ui/icon/program_icon.h"

#include <QFile>
#include <QString>

#include <cstdio>
#include <cstdlib>

/// draw_icons FOLDER SIDE…: draws the program's icon with each side in pixels as FOLDER/SIDE.png.
int main(int argc, char* argv[]) {
    for (int i = 2; i < argc; ++i) {
        const QString path =
            QStringLiteral("%1/%2.png").arg(QFile::decodeName(argv[1]), QLatin1String(argv[i]));
        if (!programImage(std::atoi(argv[i])).save(path)) {
            std::fprintf(stderr, "draw_icons: %s could not be written\n", qPrintable(path));
            return EXIT_FAILURE;
        }
    }
}
