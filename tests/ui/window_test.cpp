#include "tests/ui/window_test.h"

#include <QDesktopServices>
#include <QSettings>

static constexpr const char* schemes[]{"https", "x-apple.systempreferences"};

void WindowTest::init() {
    m_opened.clear();
    for (const char* scheme : schemes)
        QDesktopServices::setUrlHandler(scheme, this, "take");
    Localizer::shared().setLanguage(AppLanguage::en);
    m_user.emplace();
    QSettings().setValue("didOnboard", true);
    m_disk.emplace();
}

void WindowTest::cleanup() {
    close();
    m_disk.reset();
    m_user.reset();
    for (const char* scheme : schemes)
        QDesktopServices::unsetUrlHandler(scheme);
}

void WindowTest::open(QSize size, const std::optional<platform::Executor>& executor,
                      const platform::PhotoAccess& photos) {
    close();
    platform::Executor own = qtExecutor();
    own.background = [this, start = own.background](platform::Executor::Job job) {
        if (m_areJobsHeld)
            m_heldJobs.push_back(std::move(job));
        else
            start(std::move(job));
    };
    m_history.emplace(m_disk->disk());
    m_lumvale.emplace(m_disk->disk(), *m_history, executor.value_or(own),
                      platform::PhotoLibrary(m_disk->disk(), photos));
    QVERIFY(window());
    window()->resize(size);
    QVERIFY(QTest::qWaitForWindowExposed(window()));
    QTRY_COMPARE(window()->contentItem()->size(), QSizeF(size));
    // Without a window manager the window does not become active.
    window()->contentItem()->setFocus(true, Qt::ActiveWindowFocusReason);
    m_driver.emplace(*window());
}

void WindowTest::close() {
    m_driver.reset();
    m_lumvale.reset();
    m_history.reset();
}

void WindowTest::releaseJobs() {
    m_areJobsHeld = false;
    for (platform::Executor::Job& job : std::exchange(m_heldJobs, {}))
        qtExecutor().background(std::move(job));
}

void WindowTest::makeAgent(const std::string& path, const std::string& label) const {
    m_disk->write(path, "<plist><dict><key>Label</key><string>" + label + "</string></dict></plist>");
}

void WindowTest::scan() const {
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(!m_driver->rows().empty());
}

void WindowTest::confirm(const char* button) const {
    QVERIFY(m_driver->click(button));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
    layOut();
    QTRY_VERIFY(m_driver->isAtRest());
}

QStringList WindowTest::drawn() const {
    QStringList drawn;
    for (QQuickItem* row : m_driver->rows())
        drawn.append(Driver::texts(*row).join(" | "));
    return drawn;
}

QString WindowTest::ticks() const {
    QString ticks;
    for (QQuickItem* row : m_driver->rows())
        ticks += Driver::isTicked(*row) ? '+' : '-';
    return ticks;
}

QString WindowTest::current() const {
    for (const char* kind : {"photoTile", "row"})
        for (const QQuickItem* item : m_driver->itemsInSight(kind))
            if (item->property("isCurrent").toBool())
                return item->property("name").toString();
    return {};
}

QStringList WindowTest::menuEntries() const {
    QStringList texts;
    for (const QQuickItem* entry : m_driver->items("menuEntry"))
        texts.append(entry->property("text").toString() + (entry->property("isChosen").toBool() ? "*" : ""));
    return texts;
}

QString WindowTest::announced(const char* name) const {
    const auto* label = told(name);
    const bool isAnnounced = label && label->role() == QAccessible::AlertMessage
                             && label->text(QAccessible::Name) == m_driver->text(name);
    return isAnnounced ? m_driver->text(name) : QString();
}
