#include "app/identity.h"

QString Identity::name() {
    return QStringLiteral(LUMVALE_NAME);
}

QString Identity::version() {
    return QStringLiteral(LUMVALE_VERSION);
}

QString Identity::identifier() {
    return QStringLiteral(LUMVALE_IDENTIFIER);
}
