#include "ui/icon/program_icon.h"

#include <QPainter>
#include <QPixmap>
#include <QSvgRenderer>

QImage programImage(int side) {
    QImage image(side, side, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    QSvgRenderer(side > 32 ? QStringLiteral(":/icon/lumvale.svg")
                           : QStringLiteral(":/icon/lumvale-small.svg"))
        .render(&painter, QRectF(image.rect()));
    return image;
}

QIcon programIcon() {
    QIcon icon;
    for (const int side : {16, 22, 24, 32, 48, 64, 128, 256})
        icon.addPixmap(QPixmap::fromImage(programImage(side)));
    return icon;
}
