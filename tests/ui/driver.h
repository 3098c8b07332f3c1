#pragma once

#include "ui/style/blocking_action.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <thread>
#include <vector>

/// Eyes and hands on a real window: what it finds is visible, and what it clicks is clicked where it lies.
class Driver {
public:
    explicit Driver(QQuickWindow& window) : m_window(window) {}

    /// The first visible item of this object name, in dialogs as well; null when there is none.
    QQuickItem* item(const char* name) const;
    std::vector<QQuickItem*> items(const char* name) const; ///< all of them
    bool isShown(const char* name) const { return item(name) != nullptr; }

    /// A property of a visible item as text; empty when it isn't shown.
    QString text(const char* name, const char* property = "text") const;
    bool isEnabled(const char* name) const;

    /// The visible rows of lists, from top to bottom, and the one that shows this name.
    std::vector<QQuickItem*> rows() const;
    QQuickItem* row(const QString& name) const;

    /// Clicks in the middle; false when nothing of that name is shown.
    bool click(const char* name) const;
    void click(const QQuickItem& item) const;
    static QPoint centre(const QQuickItem& item) { return place(item).center().toPoint(); }
    static QRectF place(const QQuickItem& item); ///< in the window

    /// A click that the window system has to say while the program is blocked: it waits in the queue, and
    /// with it the thread.
    std::jthread clickLater(QPoint place) const;

    void key(Qt::Key key) const;

    /// What a hand does without meaning it: two clicks in haste, a key held down until it repeats.
    void doubleClick(const QQuickItem& item) const;
    void holdKey(Qt::Key key) const;

    /// What the open dialog does once it is confirmed; null without a dialog.
    BlockingAction* blockingAction() const;

    /// The visible texts of the window, or at and below an item, as drawn. Figures, which draw each character
    /// as an item of its own, are one text.
    QStringList texts() const;
    static QStringList texts(QQuickItem& item);

    /// Returns whether a check mark is drawn in the item.
    static bool isTicked(QQuickItem& item);

    /// The visible texts that don't fit where they stand, or reach out of the window; but for those that are
    /// made to be shortened.
    QStringList cutTexts() const;

    /// The visible controls that a screen reader would find without a name or a role.
    QStringList silentControls() const;

private:
    QQuickWindow& m_window;
};

/// While it lives, the program's settings are those of somebody who is through with the introduction and has
/// chosen nothing else, and the language and the formats are the same on every machine. Made before the
/// application object.
class OwnSettings {
public:
    OwnSettings();

private:
    QTemporaryDir m_folder;
};
