#include "ui/style/text_balance.h"

#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace {

int lineCount(QTextLayout& layout, qreal width) {
    layout.beginLayout();
    int count = 0;
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(width);
        ++count;
    }
    layout.endLayout();
    return count;
}

} // namespace

qreal TextBalance::width(const QString& text, const QFont& font, qreal maxWidth) {
    QString lines = text;
    QTextLayout layout(lines.replace(u'\n', QChar::LineSeparator), font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    const int wanted = lineCount(layout, maxWidth);
    int tooNarrow = 0;
    int wideEnough = static_cast<int>(std::ceil(maxWidth));
    while (wideEnough - tooNarrow > 1) {
        const int middle = tooNarrow + (wideEnough - tooNarrow) / 2;
        (lineCount(layout, middle) <= wanted ? wideEnough : tooNarrow) = middle;
    }
    return std::min<qreal>(wideEnough, maxWidth);
}
