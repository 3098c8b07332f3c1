#include "tests/ui/driver.h"

#include "app/settings.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QSettings>

#include <algorithm>
#include <filesystem>
#include <utility>

namespace {

/// Calls `visit` for each visible item at and below `item`; ignores overlap.
template <class Visit>
void forEachVisible(QQuickItem* item, Visit visit) {
    if (!item->isVisible() || item->opacity() <= 0)
        return;
    visit(item);
    for (QQuickItem* child : item->childItems())
        forEachVisible(child, visit);
}

/// Returns the part of a rectangle around the item that clipping ancestors leave visible, in window
/// coordinates.
QRectF partInSight(const QQuickItem& item, QRectF part) {
    for (const QQuickItem* around = item.parentItem(); around; around = around->parentItem())
        if (around->clip())
            part &= Driver::place(*around);
    return part;
}

QRectF partInSight(const QQuickItem& item) {
    return partInSight(item, Driver::place(item));
}

constexpr qreal rounding = 1;

/// Returns the rectangle of the characters of a text, in window coordinates, and its part in sight.
QRectF drawn(const QQuickItem& text) {
    const QRectF characters = text.mapRectToScene(text.boundingRect());
    const bool isElided = text.property("elide").toInt() != Qt::ElideNone;
    return isElided ? characters & Driver::place(text) : characters;
}
QRectF drawnPart(const QQuickItem& text) {
    return partInSight(text, drawn(text));
}

/// Returns the popup that the item belongs to; null if it is part of the window's own content.
const QQuickItem* popupOf(const QQuickItem& item) {
    const QQuickItem* popup = item.parentItem();
    while (popup && !popup->inherits("QQuickPopupItem"))
        popup = popup->parentItem();
    return popup;
}

} // namespace

std::vector<QQuickItem*> Driver::items(const char* name) const {
    std::vector<QQuickItem*> found;
    forEachVisible(m_window.contentItem(), [&](QQuickItem* item) {
        if (item->objectName() == QLatin1String(name))
            found.push_back(item);
    });
    return found;
}

QQuickItem* Driver::item(const char* name) const {
    const std::vector<QQuickItem*> found = items(name);
    return found.empty() ? nullptr : found.front();
}

QString Driver::text(const char* name, const char* property) const {
    const QQuickItem* found = item(name);
    return found ? found->property(property).toString() : QString();
}

std::vector<QQuickItem*> Driver::itemsInSight(const char* name) const {
    std::vector<QQuickItem*> found = items(name);
    std::erase_if(found, [](const QQuickItem* item) { return partInSight(*item).isEmpty(); });
    std::ranges::sort(found, {}, [](const QQuickItem* item) { return place(*item).top(); });
    return found;
}

QQuickItem* Driver::itemInSight(const char* name, const QString& text) const {
    for (QQuickItem* item : itemsInSight(name))
        if (texts(*item).value(0) == text)
            return item;
    return nullptr;
}

bool Driver::isAtRest() const {
    bool isAtRest = true;
    forEachVisible(m_window.contentItem(),
                   [&](const QQuickItem* list) { isAtRest &= !list->property("isClosingUp").toBool(); });
    return isAtRest;
}

bool Driver::click(const char* name) const {
    const QQuickItem* found = item(name);
    if (found)
        click(*found);
    return found;
}

QRectF Driver::place(const QQuickItem& item) {
    return item.mapRectToScene(QRectF(0, 0, item.width(), item.height()));
}

void Driver::holdKey(Qt::Key key) const {
    QTest::keyPress(&m_window, key);
    for (int i = 0; i < 5; ++i) {
        for (const QEvent::Type type : {QEvent::KeyRelease, QEvent::KeyPress}) {
            QKeyEvent repeated(type, key, Qt::NoModifier, {}, true);
            QCoreApplication::sendEvent(&m_window, &repeated);
        }
        QCoreApplication::processEvents();
    }
    QTest::keyRelease(&m_window, key);
}

QStringList Driver::texts(QQuickItem& item) {
    QStringList texts;
    const QQuickItem* figure = nullptr;
    forEachVisible(&item, [&](const QQuickItem* text) {
        const QString drawn = text->property("text").toString();
        if (!text->inherits("QQuickText") || drawn.isEmpty())
            return;
        const bool isCharacter = text->property("character").isValid();
        if (isCharacter && figure == text->parentItem())
            texts.back() += drawn;
        else
            texts.append(drawn);
        figure = isCharacter ? text->parentItem() : nullptr;
    });
    return texts;
}

bool Driver::isTicked(QQuickItem& item) {
    bool isTicked = false;
    forEachVisible(&item, [&](const QQuickItem* mark) {
        isTicked |= mark->inherits("Symbol") && mark->property("name") == "checkmark";
    });
    return isTicked;
}

QStringList Driver::cutTexts() const {
    QStringList cut;
    forEachVisible(m_window.contentItem(), [&](QQuickItem* item) {
        const QString text = item->property("text").toString();
        if (!item->inherits("QQuickText") || text.isEmpty() || partInSight(*item).isEmpty()
            || item->property("elide").toInt() != Qt::ElideNone)
            return;
        const QQuickItem* popup = popupOf(*item);
        const QRectF part = drawnPart(*item);
        const QRectF bounds = place(popup ? *popup : *m_window.contentItem())
                                  .adjusted(-rounding, -rounding, rounding, rounding);
        if (item->property("truncated").toBool() || !bounds.contains(part)
            || part.width() < drawn(*item).width() - rounding
            || item->property("contentWidth").toReal() > item->width() + rounding
            || item->property("contentHeight").toReal() > item->height() + rounding)
            cut.append(text);
    });
    return cut;
}

QStringList Driver::overlappingTexts() const {
    std::vector<const QQuickItem*> texts, controls;
    forEachVisible(m_window.contentItem(), [&](const QQuickItem* item) {
        if (partInSight(*item).isEmpty())
            return;
        if (item->inherits("QQuickText") && !item->property("text").toString().isEmpty())
            texts.push_back(item);
        else if (item->inherits("QQuickAbstractButton"))
            controls.push_back(item);
    });
    QStringList overlapping;
    const auto compare = [&](const QQuickItem& text, const QQuickItem& other, const QRectF& part) {
        const QRectF common = drawnPart(text) & part;
        if (popupOf(text) == popupOf(other) && common.width() > rounding && common.height() > rounding)
            overlapping.append(text.property("text").toString() + " / "
                               + (other.property("text").toString() + ' ' + other.objectName()).trimmed());
    };
    for (auto text = texts.begin(); text != texts.end(); ++text) {
        for (auto other = std::next(text); other != texts.end(); ++other)
            if ((*text)->parentItem() != (*other)->parentItem() || !(*text)->property("character").isValid())
                compare(**text, **other, drawnPart(**other));
        for (const QQuickItem* control : controls) {
            // A control that fills an item makes all of it clickable.
            const QQuickItem* parent = control->parentItem();
            const QQuickItem* whole = place(*parent) == place(*control) ? parent : control;
            if (!whole->isAncestorOf(*text))
                compare(**text, *control, partInSight(*control));
        }
    }
    return overlapping;
}

QStringList Driver::silentControls() const {
    QStringList silent;
    const QQuickItem* outer = nullptr;
    forEachVisible(m_window.contentItem(), [&](QQuickItem* item) {
        // A control inside another one is described by the outer one.
        if (!item->inherits("QQuickAbstractButton") || (outer && outer->isAncestorOf(item)))
            return;
        outer = item;
        QAccessibleInterface* told = QAccessible::queryAccessibleInterface(item);
        if (told && told->state().invisible) // behind a modal popup
            return;
        if (!told || told->text(QAccessible::Name).isEmpty() || told->role() == QAccessible::NoRole)
            silent.append(item->objectName());
    });
    return silent;
}

OwnSettings::OwnSettings() {
    // The variable is for the record of the photo permission.
    qputenv("LUMVALE_SETTINGS", m_folder.path().toLocal8Bit());
    Settings::useFolderOfEnvironment();
    // Windows share the driver's compiled shaders.
    qputenv("MESA_SHADER_CACHE_DIR", m_folder.path().toLocal8Bit());
    qputenv("LC_ALL", "C.UTF-8");
    qputenv("TZ", "UTC");
    qunsetenv("LANGUAGE");
    QCoreApplication::setOrganizationName("Lumvale Tests");
    QCoreApplication::setApplicationName("Tests");

    QSettings settings;
    settings.setValue("didOnboard", true);
    settings.sync();
    // Tests that change the user must be able to read and write the settings.
    const std::filesystem::path file = settings.fileName().toStdString();
    for (const std::filesystem::path& path : {file, file.parent_path(), file.parent_path().parent_path()})
        std::filesystem::permissions(path, std::filesystem::perms::all);
}
