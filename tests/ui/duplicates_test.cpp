#include "tests/app/hand_cranked.h"
#include "tests/support/photo_catalogue.h"
#include "tests/ui/window_test.h"
#include "ui/thumbnails/thumbnail_loader.h"

#include <QQmlEngine>

#include <QImage>

#include <optional>
#include <string>
#include <tuple>
#include <utility>

using platform::PhotoAuthorization;

namespace {

QString summary(int groups, const QString& wasted) {
    return QString::number(groups) + " " + translated("duplicates_groups_suffix") + " · " + wasted + " "
           + translated("duplicates_wasted_suffix");
}

} // namespace

/// The duplicates screen in the real window, driven by clicks and keys on a real library.
class DuplicatesTest : public WindowTest {
    Q_OBJECT

private Q_SLOTS:
    void requestsAccessAndSearchesOnceGranted();
    void drawsDescribesAndTicksPhotos();
    void showsPhotosLarge();
    void deletesOnlyConfirmedPhotos();

private:
    /// Makes photos A1 to A3 of 3 MB, A2 a favorite, and videos B1 and B2 of 2 MB without a date.
    void fill();
    void openDuplicates(const platform::Executor& executor = qtExecutor(),
                        const platform::PhotoAccess& access = photoAccess());
    void search() const; ///< clicks the button and waits for the result
    void click(const QString& name) const;
    QQuickItem* tile(const QString& name) const; ///< null if it is not visible
    QString ticked() const;                      ///< names of the photos with a check mark
    void checkTicked(const QString& names, int count, const QString& size) const;

    std::optional<CatalogueWriter> m_catalogue;
};

void DuplicatesTest::fill() {
    m_catalogue.emplace(*m_disk, CatalogueWriter::Maker::lumvale);
    for (const std::string name : {"A1", "A2", "A3", "B1", "B2", "C1"})
        m_catalogue->add({.uuid = name,
                          .size = name[0] == 'A' ? "3000000" : "2000000",
                          .created = name[0] == 'A' ? "700000000" : "NULL",
                          .kind = name[0] == 'B' ? "1" : "0",
                          .name = "'" + name + "'",
                          .favorite = name == "A2" ? "1" : "0"});
}

void DuplicatesTest::openDuplicates(const platform::Executor& executor, const platform::PhotoAccess& access) {
    open(smallest, executor, access);
    QVERIFY(m_driver->click("tab_duplicates"));
}

void DuplicatesTest::search() const {
    QVERIFY(m_driver->click("scanButton"));
    QTRY_VERIFY(m_driver->isShown("summary"));
    layOut();
}

void DuplicatesTest::click(const QString& name) const {
    m_driver->click(*tile(name));
}

QQuickItem* DuplicatesTest::tile(const QString& name) const {
    for (QQuickItem* tile : m_driver->items("photoTile"))
        if (Driver::texts(*tile).contains(name))
            return tile;
    return nullptr;
}

QString DuplicatesTest::ticked() const {
    QStringList names;
    for (QQuickItem* tile : m_driver->items("photoTile"))
        if (Driver::isTicked(*tile))
            names.append(Driver::texts(*tile));
    return names.join(' ');
}

void DuplicatesTest::checkTicked(const QString& names, int count, const QString& size) const {
    QCOMPARE(ticked(), names);
    QCOMPARE(m_driver->text("selectionLabel"),
             QString::number(count) + " " + translated("selected_count_suffix") + " · " + size);
    QCOMPARE(m_driver->isEnabled("deleteButton"), count > 0);
}

void DuplicatesTest::requestsAccessAndSearchesOnceGranted() {
    using enum PhotoAuthorization;
    fill();
    PhotoAuthorization status = notDetermined;
    for (const auto& [answer, prompt] : {std::pair(authorized, ""),
                                         {limited, ""},
                                         {denied, "duplicates_denied_text"},
                                         {notDetermined, "duplicates_permission_text"}}) {
        const bool isGiven = answer == authorized || answer == limited;
        status = notDetermined;
        HandCranked jobs;
        openDuplicates(jobs.executor(), {[&status](const platform::Disk&) { return status; },
                                         [&status, answer = answer](const platform::Disk&) {
                                             return status = answer;
                                         }});
        QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_permission_text"));
        QVERIFY(hasFocus("allowButton") && !m_driver->isShown("scanButton") && jobs.isIdle());
        QVERIFY(m_driver->click("allowButton"));
        while (!jobs.isIdle())
            jobs.run();
        QCOMPARE(m_driver->text("emptyPrompt"), translated(prompt));
        QCOMPARE(m_driver->text("summary"), isGiven ? summary(2, "8 MB") : QString());
        QCOMPARE(hasFocus("scanButton"), isGiven);
        if (!isGiven)
            continue;
        QVERIFY(m_driver->click("scanButton"));
        status = denied; // revoked during the search
        jobs.run();
        QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_denied_text"));
        QVERIFY(!m_driver->isShown("scanButton") && !m_driver->isShown("groupsList"));
    }
}

void DuplicatesTest::drawsDescribesAndTicksPhotos() {
    fill();
    openDuplicates();
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_empty_prompt"));
    QVERIFY(!m_driver->isShown("deleteButton"));
    search();
    QVERIFY(!m_driver->isShown("emptyPrompt") && !m_driver->isShown("loadingIndicator"));
    QCOMPARE(m_driver->text("summary"), summary(2, "8 MB"));
    const QString wasted = " MB " + translated("duplicates_wasted_suffix");
    const QString kept = translated("duplicates_kept_label");
    QCOMPARE(drawn(), (QStringList{"Mar 8, 2023 | 3 × 3 MB | 6" + wasted + " | " + kept + " | A1 | A2 | A3",
                                   "2 × 2 MB | 2" + wasted + " | " + kept + " | B1 | B2"}));

    const auto* group = told(m_driver->rows().at(0));
    QStringList names{group->text(QAccessible::Name)};
    for (int i = 0; i < group->childCount(); ++i)
        names.append(group->child(i)->text(QAccessible::Name));
    QCOMPARE(names, (QStringList{"Mar 8, 2023, 3 × 3 MB, 6" + wasted, "A1, " + kept, "A2", "A3"}));
    QCOMPARE(group->child(1)->text(QAccessible::Description), "3 MB, Mar 8, 2023, ♥");
    QCOMPARE(group->child(2)->text(QAccessible::Description), "3 MB, Mar 8, 2023");
    QCOMPARE(told(m_driver->rows().at(1))->child(1)->text(QAccessible::Description),
             "2 MB, " + translated("photo_is_video"));
    QVERIFY(group->child(0)->role() == QAccessible::Graphic && !group->child(0)->state().checkable);
    QVERIFY(group->child(1)->role() == QAccessible::CheckBox && group->child(1)->state().checkable);

    // The oldest photo cannot be ticked by any means. Up and Down keep the column where the group has one.
    m_driver->item("scanButton")->forceActiveFocus(Qt::TabFocusReason);
    for (const auto& [key, next] : {std::pair(Qt::Key_Tab, "A1"),
                                    {Qt::Key_Space, "A1"},
                                    {Qt::Key_Left, "A1"},
                                    {Qt::Key_Right, "A2"},
                                    {Qt::Key_Right, "A3"},
                                    {Qt::Key_Right, "A3"},
                                    {Qt::Key_Down, "B2"},
                                    {Qt::Key_Up, "A3"},
                                    {Qt::Key_Left, "A2"}}) {
        m_driver->key(key);
        QCOMPARE(current(), next);
        checkTicked("", 0, "Zero KB");
    }
    m_driver->key(Qt::Key_Space);
    checkTicked("A2", 1, "3 MB");
    QVERIFY(group->child(1)->state().checked);
    for (int photo : {0, 1})
        if (auto* actions = group->child(photo)->actionInterface())
            actions->doAction(QAccessibleActionInterface::toggleAction());
    checkTicked("", 0, "Zero KB");
    for (const char* name : {"A1", "A2", "A3", "B1", "B2", "A3"})
        click(name);
    checkTicked("A2 B2", 2, "5 MB");
    // The next search finds a change and clears the ticks and the thumbnails.
    const auto isCached = [this] {
        bool isAnswered = false;
        QObject receiver;
        const auto answer = [&](const Thumbnail&) {
            isAnswered = true;
        };
        ThumbnailLoader::create(qmlEngine(window()))
            ->load({ThumbnailSource::Kind::photo, "C1/L0/001"}, &receiver, answer);
        const bool isAtOnce = isAnswered;
        return QTest::qWaitFor([&] { return isAnswered; }) && isAtOnce;
    };
    QVERIFY(!isCached() && isCached());
    m_catalogue->run("UPDATE ZASSET SET ZHIDDEN = 1 WHERE ZUUID = 'B2'");
    search();
    QVERIFY(!isCached());
    QCOMPARE(m_driver->text("summary"), summary(1, "6 MB"));
    checkTicked("", 0, "Zero KB");
    m_disk->write(CatalogueWriter::file, "damaged");
    QVERIFY(m_driver->click("scanButton"));
    QTRY_COMPARE(m_driver->text("emptyPrompt"), translated("photos_unreadable"));
}

void DuplicatesTest::showsPhotosLarge() {
    fill();
    const std::string original = std::string(CatalogueWriter::folder) + "/originals/A/A2.jpeg";
    m_disk->make(original);
    QImage image(60, 40, QImage::Format_RGB32);
    image.fill(Qt::red);
    QVERIFY(image.save(QString::fromStdString(m_disk->host(original)), "png"));
    openDuplicates();
    search();
    m_driver->doubleClick(*tile("A2"));
    QTRY_COMPARE(m_driver->text("previewTitle"), "A2");
    QCOMPARE(m_driver->text("previewFacts"), "3 MB · Mar 8, 2023 · 40 × 30 · ♥ · 2 of 3");
    checkTicked("", 0, "Zero KB"); // as before the double click
    QTRY_COMPARE(window()->grabWindow().pixelColor(Driver::center(*m_driver->item("preview"))),
                 QColor(Qt::red));
    for (const auto& [key, next, ticks] : {std::tuple(Qt::Key_Space, "A2", "A2"),
                                           {Qt::Key_Right, "A3", "A2"},
                                           {Qt::Key_Right, "A3", "A2"},
                                           {Qt::Key_Space, "A3", "A2 A3"},
                                           {Qt::Key_Left, "A2", "A2 A3"},
                                           {Qt::Key_Left, "A1", "A2 A3"},
                                           {Qt::Key_Space, "A1", "A2 A3"}}) {
        m_driver->key(key);
        QTRY_COMPARE(m_driver->text("previewTitle"), next);
        QVERIFY(told(window()->activeFocusItem())->text(QAccessible::Name).startsWith(next));
        QCOMPARE(ticked(), ticks);
    }
    QTRY_COMPARE(m_driver->text("previewMissing"), translated("photo_not_on_disk"));
    layOut();
    m_driver->click(*m_driver->itemsInSight("nextButton").front());
    QTRY_COMPARE(m_driver->itemsInSight("previewCheckBox").size(), 1U); // the kept photo has none
    m_driver->click(*m_driver->itemsInSight("previewCheckBox").front());
    QCOMPARE(ticked(), "A3");
    QTRY_COMPARE(m_driver->text("preview", "isLoaded"), "true");
    m_driver->key(Qt::Key_Menu);
    QTRY_COMPARE(menuEntries().size(), 2);
    for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Left, Qt::Key_Menu}) // A1 is in iCloud only
        m_driver->key(key);
    QVERIFY(menuEntries().isEmpty() && m_driver->text("previewTitle") == "A1");
    m_driver->key(Qt::Key_Right);
    m_driver->click("closeButton");
    QTRY_VERIFY(!m_driver->isShown("photoPage"));
    // The focus is on the photo that was shown last.
    m_driver->key(Qt::Key_Menu);
    QTRY_COMPARE(menuEntries().size(), 2);
    m_driver->key(Qt::Key_Escape);
    m_driver->key(Qt::Key_Return);
    QTRY_COMPARE(m_driver->text("previewTitle"), "A2");
    m_driver->key(Qt::Key_Right);
    m_driver->key(Qt::Key_Escape);
    QTRY_COMPARE(current(), "A3");
    m_driver->click(*tile("A1")->findChild<QQuickItem*>("previewButton"));
    QTRY_COMPARE(m_driver->text("previewTitle"), "A1");
    QCOMPARE(ticked(), "A3");
}

void DuplicatesTest::deletesOnlyConfirmedPhotos() {
    fill();
    HandCranked jobs;
    openDuplicates(jobs.executor());
    QVERIFY(m_driver->click("scanButton") && m_driver->click("stopButton"));
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_stopped"));
    QVERIFY(hasFocus("scanButton") && m_driver->click("scanButton"));
    jobs.run();
    layOut();
    for (const char* name : {"A2", "A3", "B2"})
        click(name);
    for (const bool stops : {true, false}) {
        QVERIFY(m_driver->click("deleteButton"));
        QTRY_VERIFY(m_driver->isShown("confirm"));
        QVERIFY(m_driver->click("confirm"));
        if (stops)
            m_driver->key(Qt::Key_Escape);
        // The library has not answered: nothing has changed, and the dialog covers the buttons.
        QVERIFY(ticked() == "A2 A3 B2" && m_driver->isShown("confirm") && !m_driver->isEnabled("confirm"));
        jobs.run();
        QVERIFY(!m_driver->isShown("confirm"));
        QCOMPARE(announced("deletedLabel"), stops ? translated("duplicates_delete_stopped")
                                                  : "3 " + translated("duplicates_deleted_suffix"));
        QCOMPARE(ticked(), stops ? "A2 A3 B2" : "");
        QCOMPARE(hasFocus("deleteButton"), stops);
    }
    QVERIFY(m_driver->isShown("loadingIndicator") && !m_driver->isShown("groupsList")
            && !m_driver->isShown("deleteButton"));
    jobs.run();
    QCOMPARE(m_driver->text("emptyPrompt"), translated("duplicates_none_found"));
    QVERIFY(!m_driver->isShown("groupsList") && !m_driver->isShown("deleteButton")
            && !m_driver->isShown("summary") && hasFocus("scanButton"));
}

int main(int argc, char** argv) {
    return runTest<DuplicatesTest>(argc, argv);
}

#include "duplicates_test.moc"
