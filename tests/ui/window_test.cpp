#include "tests/ui/window_test.h"

void WindowTest::init() {
    Localizer::shared().setLanguage(AppLanguage::en);
    m_user.emplace();
    m_disk.emplace();
}

void WindowTest::cleanup() {
    close();
    m_disk.reset();
    m_user.reset();
}

void WindowTest::open(QSize size, const platform::Executor& executor, const platform::PhotoAccess& photos) {
    close();
    m_history.emplace(m_disk->disk());
    m_lumvale.emplace(m_disk->disk(), *m_history, executor, platform::PhotoLibrary(m_disk->disk(), photos));
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

void WindowTest::makeAgent(const std::string& path, const std::string& label) const {
    m_disk->write(path, "<plist><dict><key>Label</key><string>" + label + "</string></dict></plist>");
}

void WindowTest::confirm(const char* button) const {
    QVERIFY(m_driver->click(button));
    QTRY_VERIFY(m_driver->isShown("confirm"));
    QVERIFY(m_driver->click("confirm"));
    QTRY_VERIFY(!m_driver->isShown("confirm"));
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

QStringList WindowTest::shown(const char* property) const {
    QStringList shown;
    for (const QQuickItem* row : m_driver->rows()) {
        const QVariant own = row->property(property);
        shown.append((own.isValid() ? own : stepsOf(*row).front()->property(property)).toString());
    }
    return shown;
}

QString WindowTest::current() const {
    for (const QQuickItem* row : m_driver->rows())
        for (const QQuickItem* step : stepsOf(*row))
            if (step->property("isCurrent").toBool())
                return step->property("name").toString();
    return {};
}

std::vector<const QQuickItem*> WindowTest::stepsOf(const QQuickItem& row) const {
    std::vector<const QQuickItem*> photos;
    for (const QQuickItem* photo : m_driver->items("photoTile"))
        if (row.isAncestorOf(photo))
            photos.push_back(photo);
    return photos.empty() ? std::vector{&row} : photos;
}

bool WindowTest::hasFocus(const char* name) const {
    const QQuickItem* found = m_driver->item(name);
    return found && found->hasActiveFocus();
}

QStringList WindowTest::menuEntries() const {
    QStringList texts;
    for (const QQuickItem* entry : m_driver->items("menuEntry"))
        texts.append(entry->property("text").toString() + (entry->property("isChosen").toBool() ? "*" : ""));
    return texts;
}

QQuickItem* WindowTest::menuEntry(const QString& text) const {
    for (QQuickItem* entry : m_driver->items("menuEntry"))
        if (entry->property("text").toString() == text)
            return entry;
    return nullptr;
}

QAccessibleInterface* WindowTest::told(const char* name) const {
    return QAccessible::queryAccessibleInterface(m_driver->item(name));
}

QString WindowTest::announced(const char* name) const {
    const auto* label = told(name);
    const QString text = m_driver->text(name);
    const bool isAnnounced =
        label && label->role() == QAccessible::AlertMessage && label->text(QAccessible::Name) == text;
    return isAnnounced ? text : QString();
}

void WindowTest::press(QAccessibleInterface* control) {
    control->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

void WindowTest::checkEverythingIsSaid() const {
    layOut();
    QTRY_COMPARE(m_driver->cutTexts().join("; "), QString()); // until delegates are created
    QCOMPARE(m_driver->silentControls().join("; "), QString());
}

void WindowTest::eachLanguage() {
    QTest::addColumn<AppLanguage>("language");
    for (const AppLanguage language : allAppLanguages)
        QTest::newRow(rawValue(language).toLatin1().constData()) << language;
}

QString translated(const char* key) {
    return tr(QLatin1String(key));
}
