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
                             .arg(++m_number, 3, 10, QLatin1Char('0'))
                             .arg(QString::fromStdString(state).replace(' ', '-'));
    const QSize size = m_window->size();
    takeIn(size, name);
    takeIn(m_window->minimumSize(), name + "-small");
    resize(size);
}

void Camera::resize(QSize size) const {
    m_window->resize(size);
    // The surface gets its size later than the items, and clicks belong to the old layout until then.
    expect(QTest::qWaitFor([&] {
               return m_window->contentItem()->size().toSize() == size
                      && m_window->grabWindow().deviceIndependentSize().toSize() == size;
           }),
           "the window gets its size");
}

void Camera::takeIn(QSize size, const QString& name) {
    resize(size);
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
            return problems.isEmpty() && driver.isAtRest();
        },
        1000);
    m_problems += problems;
}
