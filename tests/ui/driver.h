#pragma once

#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>

#include <vector>

/// Finds visible items of a window and sends it pointer and key events.
class Driver {
public:
    explicit Driver(QQuickWindow& window) : m_window(window) {}

    /// Returns the first visible item with this objectName, dialogs included; null if there is none.
    QQuickItem* item(const char* name) const;
    std::vector<QQuickItem*> items(const char* name) const; ///< all such items
    /// Returns those that are not scrolled out of view, from top to bottom.
    std::vector<QQuickItem*> itemsInSight(const char* name) const;
    /// Returns the first of those whose first drawn text is this one; null if there is none.
    QQuickItem* itemInSight(const char* name, const QString& text) const;
    bool isShown(const char* name) const { return item(name) != nullptr; }

    /// Returns a property of a visible item as text; empty if the item is not visible.
    QString text(const char* name, const char* property = "text") const;
    bool isEnabled(const char* name) const { return text(name, "enabled") == "true"; }

    /// Returns the rows of lists in sight, and the one with this first text, its name.
    std::vector<QQuickItem*> rows() const { return itemsInSight("row"); }
    QQuickItem* row(const QString& name) const { return itemInSight("row", name); }
    /// Returns false while rows fade that have left their list, and while the others close up.
    bool isAtRest() const;

    /// Clicks the center of the item; returns false if no such item is visible.
    bool click(const char* name) const;
    void click(const QQuickItem& item) const { click(center(item)); }
    void click(QPoint place) const { QTest::mouseClick(&m_window, Qt::LeftButton, {}, place); }
    static QPoint center(const QQuickItem& item) { return place(item).center().toPoint(); }
    static QRectF place(const QQuickItem& item); ///< in window coordinates

    void key(Qt::Key key) const { QTest::keyClick(&m_window, key); }

    /// Sends a double click, or a key press with repeats.
    void doubleClick(const QQuickItem& item) const {
        QTest::mouseDClick(&m_window, Qt::LeftButton, {}, center(item));
    }
    void holdKey(Qt::Key key) const;

    /// Returns the visible texts of the window or of an item, as drawn. TabularText, which draws each
    /// character as an item, counts as one text.
    QStringList texts() const { return texts(*m_window.contentItem()); }
    static QStringList texts(QQuickItem& item);

    /// Returns whether a check mark is drawn in the item.
    static bool isTicked(QQuickItem& item);

    /// Returns the visible texts that are larger than their items, or that are outside the window or the
    /// popup that they belong to. Elided texts are never cut.
    QStringList cutTexts() const;

    /// Returns the pairs of visible texts that overlap, and the texts that overlap a control of which they
    /// are no part.
    QStringList overlappingTexts() const;

    /// Returns the visible controls without an accessible name or role.
    QStringList silentControls() const;

private:
    QQuickWindow& m_window;
};

/// Provides empty settings with a finished introduction and fixed locale and time zone. Must be created
/// before the application object.
class OwnSettings {
public:
    OwnSettings();

private:
    QTemporaryDir m_folder;
};
