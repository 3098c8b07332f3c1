#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"

#include <QClipboard>
#include <QDBusConnection>
#include <QDesktopServices>

#include <filesystem>
#include <optional>
#include <string>

namespace fs = std::filesystem;

namespace {

/// A file manager on the session's D-Bus.
class OwnFileManager : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.FileManager1")

public:
    void start() {
        QDBusConnection bus = QDBusConnection::sessionBus();
        QVERIFY(bus.registerObject("/org/freedesktop/FileManager1", this, QDBusConnection::ExportAllSlots)
                && bus.registerService("org.freedesktop.FileManager1"));
    }
    void stop() {
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.unregisterObject("/org/freedesktop/FileManager1");
        bus.unregisterService("org.freedesktop.FileManager1");
    }

    QStringList m_shown;

public Q_SLOTS:
    void ShowItems(const QStringList& uris, const QString& /*startupId*/) { m_shown = uris; }
};

} // namespace

/// Paths, tips and context menus of rows. Requires a D-Bus session of its own.
class EntryRowTest : public WindowTest {
    Q_OBJECT

public Q_SLOTS:
    void openFolder(const QUrl& folder) { m_folder = folder.toEncoded(); } ///< instead of the system

private Q_SLOTS:
    /// Connects before tests change the user, which D-Bus would refuse.
    void initTestCase() { QVERIFY(QDBusConnection::sessionBus().isConnected()); }
    void init();

    void tellsShowsAndCopiesPaths_data();
    void tellsShowsAndCopiesPaths();
    void saysWhyNothingIsShown();

private:
    QQuickItem* openRow(const char* tab, const QString& name) const; ///< null if it doesn't appear
    void choose(const QString& entry) const;                         ///< of the open menu

    std::optional<CatalogueWriter> m_catalogue;
    OwnFileManager m_fileManager;
    QByteArray m_folder;
};

void EntryRowTest::init() {
    WindowTest::init();
    m_disk->write("~/Library/Logs/100% #\xFF\n.log", "odd name");
    m_disk->make("/Applications/Paint.app/x 1000");
    makeAgent("~/Library/LaunchAgents/a.plist", "com.example.agent");
    m_catalogue.emplace(*m_disk);
    for (const char* uuid : {"kept", "copy"})
        m_catalogue->add({.uuid = uuid, .name = "'" + std::string(uuid) + ".jpg'"});
    m_disk->make(CatalogueWriter::folder + std::string("/originals/A/kept.jpeg 9"));
}

QQuickItem* EntryRowTest::openRow(const char* tab, const QString& name) const {
    m_driver->click(tab);
    m_driver->click("scanButton"); // if there is one
    const auto find = [&] {
        for (QQuickItem* tile : m_driver->itemsInSight("photoTile"))
            if (tile->property("name") == name)
                return tile;
        return m_driver->row(name);
    };
    const bool isShown = QTest::qWaitFor([&] { return find() != nullptr; });
    layOut();
    return isShown ? find() : nullptr;
}

void EntryRowTest::choose(const QString& entry) const {
    QTRY_COMPARE(menuEntries(), (QStringList{translated("show_in_file_manager"), translated("copy_path")}));
    m_driver->click(*menuEntry(entry));
    QTRY_VERIFY(menuEntries().isEmpty());
}

void EntryRowTest::tellsShowsAndCopiesPaths_data() {
    QTest::addColumn<QByteArray>("tab");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QByteArray>("uri");
    QTest::newRow("item") << QByteArray("tab_cleanup") << "100% #\uFFFD\u21B5.log"
                          << "/Users/me/Library/Logs/100% #\uFFFD\u21B5.log"
                          << QByteArray("/Users/me/Library/Logs/100%25%20%23%FF%0A.log");
    QTest::newRow("application") << QByteArray("tab_uninstall") << "Paint"
                                 << "/Applications/Paint.app" << QByteArray("/Applications/Paint.app");
    QTest::newRow("startup item") << QByteArray("tab_startup") << "Agent"
                                  << "/Users/me/Library/LaunchAgents/a.plist"
                                  << QByteArray("/Users/me/Library/LaunchAgents/a.plist");
    QTest::newRow("photo") << QByteArray("tab_duplicates") << "kept.jpg"
                           << "/Users/me/Pictures/Photos Library.photoslibrary/originals/A/kept.jpeg"
                           << QByteArray(
                                  "/Users/me/Pictures/Photos%20Library.photoslibrary/originals/A/kept.jpeg");
}

void EntryRowTest::tellsShowsAndCopiesPaths() {
    QFETCH(QByteArray, tab);
    QFETCH(QString, name);
    QFETCH(QString, path);
    QFETCH(QByteArray, uri);
    open();
    QQuickItem* row = openRow(tab.constData(), name);
    QVERIFY(row);
    const QString tickedBefore = ticks();
    QTRY_VERIFY(told(row)->text(QAccessible::Description).endsWith(path));
    QTest::mouseMove(window(), Driver::center(*row));
    QTRY_VERIFY(m_driver->text("tipText").endsWith(path));

    const QByteArray root = "file://" + QByteArray::fromStdString(m_disk->disk().hostRoot());
    m_fileManager.start();
    QTest::mouseClick(window(), Qt::RightButton, {}, Driver::center(*row));
    QVERIFY(!m_driver->isShown("tipText"));
    choose(translated("show_in_file_manager"));
    QTRY_COMPARE(m_fileManager.m_shown, QStringList(root + uri));
    m_fileManager.stop();

    // Without a file manager on D-Bus the desktop opens the folder. The keyboard leads to the menu and back.
    QDesktopServices::setUrlHandler("file", this, "openFolder");
    row->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(window(), Qt::Key_F10, Qt::ShiftModifier);
    QTRY_VERIFY(m_driver->isShown("menuEntry"));
    m_driver->key(Qt::Key_Return);
    QTRY_COMPARE(m_folder, root + uri.left(uri.lastIndexOf('/')));
    QDesktopServices::unsetUrlHandler("file");
    QTRY_COMPARE(current(), row->property("name"));
    m_driver->key(Qt::Key_Menu);
    choose(translated("copy_path"));
    QCOMPARE(QGuiApplication::clipboard()->text(), path);
    QCOMPARE(announced("notice"), translated("path_copied"));
    QCOMPARE(ticks(), tickedBefore);
}

void EntryRowTest::saysWhyNothingIsShown() {
    m_disk->make({"~/Library/Caches/gone/x 5000", "~/Library/Logs/kept 10"});
    open();
    openRow("tab_cleanup", "kept");
    const auto show = [this](const QString& name) {
        QTest::mouseClick(window(), Qt::RightButton, {}, Driver::center(*m_driver->row(name)));
        choose(translated("show_in_file_manager"));
        return announced("notice");
    };
    m_disk->setMode("~/Library/Logs", 0);
    QCOMPARE(show("kept"), translated("show_unreachable").arg("kept"));
    m_disk->setMode("~/Library/Logs", 0755);
    fs::remove_all(m_disk->host("~/Library/Caches/gone"));
    QCOMPARE(show("gone"), translated("show_gone").arg("gone"));
}

int main(int argc, char** argv) {
    return runTest<EntryRowTest>(argc, argv);
}

#include "entry_row_test.moc"
