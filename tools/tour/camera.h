#pragma once

#include <QDir>
#include <QQuickWindow>
#include <QStringList>

#include <optional>
#include <string>

/// Takes pictures of a window in each of its states, in the normal and in the smallest size, and looks for
/// texts that are cut or overlap. The files are named LANGUAGE-NUMBER-STATE.png and
/// LANGUAGE-NUMBER-STATE-small.png.
class Camera {
public:
    /// Without a folder texts are checked and no picture is saved.
    Camera(std::optional<QDir> folder, QString language);

    /// Shows the window to the camera.
    void aim(QQuickWindow& window) { m_window = &window; }

    /// Takes the pictures after `delay` milliseconds, by default enough for transitions.
    void take(const std::string& state, int delay = 200);

    /// Returns what was found so far: a line for each picture with cut or overlapping texts.
    const QStringList& problems() const { return m_problems; }

private:
    void resize(QSize size) const; ///< and waits until the window has this size
    void takeIn(QSize size, const QString& name);

    std::optional<QDir> m_folder;
    QString m_language;
    QQuickWindow* m_window = nullptr;
    int m_number = 0;
    QStringList m_problems;
};
