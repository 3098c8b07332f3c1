#include "app/identity.h"

#include <QStringList>

#include <algorithm>

QString Identity::name() {
    return QStringLiteral(LUMVALE_NAME);
}

QString Identity::version() {
    return QStringLiteral(LUMVALE_VERSION);
}

QString Identity::identifier() {
    return QStringLiteral(LUMVALE_IDENTIFIER);
}

QString Identity::domain() {
    QStringList labels = identifier().split(u'.').first(identifier().count(u'.'));
    std::reverse(labels.begin(), labels.end());
    return labels.join(u'.');
}
