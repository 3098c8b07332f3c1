#include "ui/icon/program_icon.h"

#include <QBuffer>
#include <QFile>
#include <QString>
#include <QtEndian>

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace {

QByteArray png(int side) {
    QBuffer buffer;
    programImage(side).save(&buffer, "PNG");
    return buffer.data();
}

/// Returns a block of a Mac's icon file: four letters, the length with this header (32 bits, big-endian),
/// content.
QByteArray block(const char* type, const QByteArray& content) {
    QByteArray length(4, 0);
    qToBigEndian(static_cast<quint32>(content.size() + 8), length.data());
    return type + length + content;
}

/// Returns a Mac's icon file: a block of blocks with one PNG each.
QByteArray macIcon() {
    // The second of two types with the same side is for screens of twice the resolution.
    static constexpr std::pair<const char*, int> types[]{{"ic11", 32},  {"ic12", 64},  {"ic07", 128},
                                                         {"ic08", 256}, {"ic13", 256}, {"ic09", 512},
                                                         {"ic14", 512}, {"ic10", 1024}};
    QByteArray pictures;
    for (const auto& [type, side] : types)
        pictures += block(type, png(side));
    return block("icns", pictures);
}

void save(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || !file.flush()) {
        std::fprintf(stderr, "draw_icons: %s could not be written\n", qPrintable(path));
        std::exit(EXIT_FAILURE);
    }
}

} // namespace

/// draw_icons FOLDER SIDE…: draws the program's icon with each side in pixels as FOLDER/SIDE.png.
/// draw_icons FILE.icns: draws it in all sizes of a Mac's icon file.
int main(int argc, char* argv[]) {
    const QString target = QFile::decodeName(argv[1]);
    if (target.endsWith(QLatin1String(".icns")))
        save(target, macIcon());
    for (int i = 2; i < argc; ++i)
        save(QStringLiteral("%1/%2.png").arg(target, QLatin1String(argv[i])), png(std::atoi(argv[i])));
}
