#include <QGuiApplication>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QSet>

#include <cstdio>
#include <cstdlib>

/// photograph WINDOW FILE: saves what a window of another program shows as a picture, and prints how many
/// colours it has.
int main(int argc, char* argv[]) {
    const QGuiApplication application(argc, argv);
    const auto id = static_cast<WId>(argc == 3 ? std::strtoull(argv[1], nullptr, 0) : 0);
    const QImage image =
        QGuiApplication::primaryScreen()->grabWindow(id).toImage().convertToFormat(QImage::Format_RGB32);
    if (id == 0 || image.isNull() || !image.save(QString::fromLocal8Bit(argv[2])))
        return EXIT_FAILURE;
    QSet<QRgb> colours;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colours.insert(image.pixel(x, y));
    std::printf("%lld\n", static_cast<long long>(colours.size()));
}
