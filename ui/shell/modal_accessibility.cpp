#include "ui/shell/modal_accessibility.h"

#include <QAccessible>
#include <QAccessibleObject>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>
#include <utility>

namespace {

bool isPopup(const QQuickItem& item) {
    return item.inherits("QQuickPopupItem");
}

bool isModal(const QQuickItem& item) {
    return isPopup(item) && item.parent()->property("modal").toBool();
}

/// Returns true for a tool tip, whose text is in the description of its control.
bool isTip(const QQuickItem& item) {
    return isPopup(item) && item.parent()->inherits("QQuickToolTip");
}

bool isAccessible(const QQuickItem& item) {
    const QObjectList& children = item.children();
    return std::any_of(children.begin(), children.end(), [](const QObject* child) {
        return child->inherits("QQuickAccessibleAttached") && !child->property("ignored").toBool();
    });
}

/// Returns the item that contains the open popups; null before the first one is created.
QQuickItem* overlayOf(const QQuickWindow& window) {
    const QList<QQuickItem*> items = window.contentItem()->childItems();
    const auto found = std::find_if(items.begin(), items.end(),
                                    [](const QQuickItem* item) { return item->inherits("QQuickOverlay"); });
    return found == items.end() ? nullptr : *found;
}

/// Returns the items that assistive technology can reach: the topmost modal popup and what is above it, or
/// the window's content if no modal popup is open.
QList<QQuickItem*> reachableItems(const QQuickWindow& window) {
    const QQuickItem* overlay = overlayOf(window);
    const QList<QQuickItem*> popups = overlay ? overlay->childItems() : QList<QQuickItem*>{};
    for (qsizetype i = popups.size() - 1; i >= 0; --i)
        if (isModal(*popups[i]))
            return popups.sliced(i);
    return {window.contentItem()};
}

bool isReachable(const QQuickItem& item) {
    const QList<QQuickItem*> items = reachableItems(*item.window());
    return std::any_of(items.begin(), items.end(),
                       [&](const QQuickItem* root) { return root == &item || root->isAncestorOf(&item); });
}

/// Appends the accessible interfaces of `item`, or of its closest accessible descendants if it has none.
void appendAccessible(QQuickItem* item, QList<QAccessibleInterface*>& interfaces) {
    if (QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(item)) {
        interfaces.append(interface);
        return;
    }
    for (QQuickItem* child : item->childItems())
        appendAccessible(child, interfaces);
}

class AccessibleBase : public QAccessibleObject {
public:
    using QAccessibleObject::QAccessibleObject;

    int childCount() const override { return int(children().size()); }
    QAccessibleInterface* child(int index) const override { return children().value(index); }
    int indexOfChild(const QAccessibleInterface* child) const override {
        return int(children().indexOf(const_cast<QAccessibleInterface*>(child)));
    }

private:
    virtual QList<QAccessibleInterface*> children() const { return {}; }
};

/// The window, with the reachable items as children.
class AccessibleWindow : public AccessibleBase {
public:
    explicit AccessibleWindow(QQuickWindow* window) : AccessibleBase(window), m_window(*window) {}

    QWindow* window() const override { return &m_window; }
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(qApp); }
    QAccessible::Role role() const override { return QAccessible::Window; }
    QRect rect() const override { return {m_window.mapToGlobal(QPoint()), m_window.size()}; }
    QString text(QAccessible::Text text) const override {
        return text == QAccessible::Name ? m_window.title() : QString();
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.active = m_window.isActive();
        state.focusable = true;
        state.invisible = !m_window.isVisible();
        return state;
    }

    QAccessibleInterface* focusChild() const override {
        QQuickItem* item = m_window.activeFocusItem();
        return item && isReachable(*item) ? QAccessible::queryAccessibleInterface(item) : nullptr;
    }

private:
    QList<QAccessibleInterface*> children() const override {
        QList<QAccessibleInterface*> children;
        for (QQuickItem* item : reachableItems(m_window))
            appendAccessible(item, children);
        return children;
    }

    QQuickWindow& m_window;
};

/// An item behind a modal popup: without text, actions and children.
class AccessibleHiddenItem : public AccessibleBase {
public:
    explicit AccessibleHiddenItem(QQuickItem* item) : AccessibleBase(item), m_item(*item) {}

    QWindow* window() const override { return m_item.window(); }
    QAccessibleInterface* parent() const override {
        return QAccessible::queryAccessibleInterface(m_item.window());
    }
    QAccessible::Role role() const override { return QAccessible::Grouping; }
    QString text(QAccessible::Text /*text*/) const override { return {}; }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.invisible = true;
        state.disabled = true;
        return state;
    }

protected:
    QQuickItem& m_item;
};

/// A menu, dialog or sheet.
class AccessiblePopup : public AccessibleHiddenItem {
public:
    using AccessibleHiddenItem::AccessibleHiddenItem;

    QAccessible::Role role() const override {
        return m_item.parent()->inherits("QQuickMenu") ? QAccessible::PopupMenu : QAccessible::Dialog;
    }

    QRect rect() const override {
        if (!m_item.window())
            return {};
        const QRectF scene = m_item.mapRectToScene(m_item.boundingRect());
        return scene.toAlignedRect().translated(m_item.window()->mapToGlobal(QPoint()));
    }

    QString text(QAccessible::Text text) const override {
        switch (text) {
        case QAccessible::Name:
            return m_item.parent()->property("accessibleName").toString();
        case QAccessible::Description:
            return m_item.parent()->property("accessibleDescription").toString();
        default:
            return {};
        }
    }

    QAccessible::State state() const override {
        QAccessible::State state;
        state.modal = isModal(m_item);
        state.active = m_item.hasActiveFocus();
        state.invisible = !m_item.isVisible();
        return state;
    }

private:
    QList<QAccessibleInterface*> children() const override {
        QList<QAccessibleInterface*> children;
        for (QQuickItem* item : m_item.childItems())
            appendAccessible(item, children);
        return children;
    }
};

/// Returns null for objects that Qt's own interfaces serve.
QAccessibleInterface* createInterface(const QString& /*className*/, QObject* object) {
    if (auto* window = qobject_cast<QQuickWindow*>(object))
        return new AccessibleWindow(window);
    auto* item = qobject_cast<QQuickItem*>(object);
    if (!item || !isAccessible(*item) || isTip(*item))
        return nullptr;
    if (item->window() && !isReachable(*item))
        return new AccessibleHiddenItem(item);
    return isPopup(*item) ? new AccessiblePopup(item) : nullptr;
}

/// Deletes the interfaces of `item` and its descendants, except below `kept`. Assistive technology then asks
/// for new ones; references to the old ones are no longer valid.
void deleteInterfaces(QQuickItem* item, const QQuickItem* kept) {
    if (item == kept)
        return;
    if (QAccessibleInterface* interface = QAccessible::queryAccessibleInterface(item))
        QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(interface));
    for (QQuickItem* child : item->childItems())
        deleteInterfaces(child, kept);
}

void notify(QAccessibleInterface* interface, QAccessible::Event type) {
    QAccessibleEvent event(interface, type);
    QAccessible::updateAccessibility(&event);
}

} // namespace

void ModalAccessibility::install() {
    QAccessible::installFactory(createInterface);
}

ModalAccessibility::ModalAccessibility(QQuickWindow* window) : QObject(window), m_window(*window) {
    connect(window->contentItem(), &QQuickItem::childrenChanged, this, &ModalAccessibility::followOverlay);
    followOverlay();
}

void ModalAccessibility::followOverlay() {
    if (m_overlay)
        return;
    m_overlay = overlayOf(m_window);
    // Queued: an action of an item that opens or closes a popup must end before its interface is deleted.
    if (m_overlay)
        connect(m_overlay, &QQuickItem::childrenChanged, this, &ModalAccessibility::update,
                Qt::QueuedConnection);
    update();
}

void ModalAccessibility::update() {
    QQuickItem* top = reachableItems(m_window).constFirst();
    QQuickItem* modal = isModal(*top) ? top : nullptr;
    if (modal == m_modal)
        return;
    const QPointer<QQuickItem> previous = std::exchange(m_modal, modal);
    if (!QAccessible::isActive())
        return;

    QList<QAccessibleInterface*> old;
    for (QQuickItem* item : m_window.contentItem()->childItems())
        if (item != m_overlay)
            appendAccessible(item, old);
    for (QAccessibleInterface* interface : old)
        notify(interface, QAccessible::ObjectDestroyed);
    deleteInterfaces(m_window.contentItem(), modal);
    if (previous && !previous->window()) // closed
        deleteInterfaces(previous, nullptr);

    QAccessibleInterface* window = QAccessible::queryAccessibleInterface(&m_window);
    for (int i = 0; i < window->childCount(); ++i)
        notify(window->child(i), QAccessible::ObjectCreated);
    if (m_window.isActive() && m_window.activeFocusItem()) {
        QAccessibleEvent event(m_window.activeFocusItem(), QAccessible::Focus);
        QAccessible::updateAccessibility(&event);
    }
}
