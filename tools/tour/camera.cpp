#include "tools/tour/camera.h"

#include "tests/ui/driver.h"
#include "tools/tour/expect.h"

#include <utility>

Camera::Camera(std::optional<QDir> folder, QString language)
    : m_folder(std::move(folder)), m_language(std::move(language)) {}

void Camera::take(const std::string& state, int delay) {
    QTest::qWait(delay);
    const QString name = QStringLiteral("%1-%2-%3")
                             .arg(m_language)
                             .arg(++m_number, 2, 10, QLatin1Char('0'))
                             .arg(QString::fromStdString(state).replace(' ', '-'));
    const QSize size = m_window->size();
    takeIn(size, name);
    takeIn(m_window->minimumSize(), name + "-small");
    m_window->resize(size);
}

void Camera::takeIn(QSize size, const QString& name) {
    m_window->resize(size);
    expect(QTest::qWaitFor([&] { return m_window->contentItem()->size().toSize() == size; }),
           "the window gets its size");
    const Driver driver(*m_window);
    QStringList problems;
    // Delegates are created while the first frames are drawn.
    (void)QTest::qWaitFor(
        [&] {
            const QImage picture = m_window->grabWindow();
            if (m_folder)
                expect(picture.save(m_folder->filePath(name + ".png")), "a picture is saved");
            problems.clear();
            for (const QString& text : driver.cutTexts())
                problems.append(name + ": cut: " + text);
            for (const QString& texts : driver.overlappingTexts())
                problems.append(name + ": overlap: " + texts);
            return problems.isEmpty();
        },
        1000);
    m_problems += problems;
}
