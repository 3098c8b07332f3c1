#include "app/models/startup_view_model.h"

#include "tests/app/hand_cranked.h"
#include "tests/support/temporary_disk.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <limits>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;

class StartupViewModelTest : public testing::Test {
protected:
    void makeAgent(const std::string& path, const std::string& label) const {
        m_disk.write(path, "<plist><dict><key>Label</key><string>" + label + "</string></dict></plist>");
    }

    /// The user's agents "One" and "Two", and "Every" of every account.
    void load() {
        makeAgent("~/Library/LaunchAgents/1.plist", "com.example.one");
        makeAgent("~/Library/LaunchAgents/2.plist", "com.example.two");
        makeAgent("/Library/LaunchAgents/3.plist", "com.example.every");
        m_model.load();
        m_jobs.run();
    }

    Texts shown() const {
        Texts names;
        for (int row = 0; row < m_model.itemsModel()->rowCount(); ++row)
            names.push_back(m_model.itemsModel()
                                ->data(m_model.itemsModel()->index(row), StartupItemsModel::NameRole)
                                .toString()
                                .toStdString());
        return names;
    }

    TemporaryDisk m_disk;
    HandCranked m_jobs;
    mutable StartupViewModel m_model{m_disk.disk(), m_jobs.executor()};
    QAbstractItemModelTester m_tester{m_model.itemsModel(),
                                      QAbstractItemModelTester::FailureReportingMode::Fatal};
};

} // namespace

TEST_F(StartupViewModelTest, TellsOfTheListBeforeItIsDoneLoading) {
    Texts told; // with what could be read at the time
    QObject::connect(&m_model, &StartupViewModel::itemsChanged, &m_model, [&] {
        told.push_back(std::to_string(m_model.items().size()) + (m_model.isLoading() ? " loading" : ""));
    });
    QObject::connect(&m_model, &StartupViewModel::isLoadingChanged, &m_model,
                     [&] { told.push_back(m_model.isLoading() ? "loading" : "loaded"); });
    load();
    EXPECT_EQ(told, (Texts{"loading", "3 loading", "loaded"}));
}

TEST_F(StartupViewModelTest, ShowsOfAnEndlessNameWhatLeavesRoomForTheRest) {
    const auto times = [](int count, const char* text) {
        return QByteArray(text).repeated(count).toStdString();
    };
    // Pieces that begin with no letter keep their case. What is one character to the eye isn't torn.
    const std::string longest = times(255, "1");
    const char* clef = "\U0001D11E";        // of two UTF-16 units
    const char* accented = "1\u0301\u0302"; // of three
    const std::pair<std::string, std::string> cases[]{
        {longest, longest},
        {longest + "1", longest + "…"},
        {times(65'536, "1"), longest + "…"},
        {times(255, "\u3042"), times(255, "\u3042")},
        {times(10'000, clef), times(127, clef) + "…"},
        {"1" + times(10'000, clef), "1" + times(127, clef) + "…"},
        {"1" + times(10'000, accented), "1" + times(84, accented) + "…"},
    };
    for (const auto& [label, name] : cases) {
        makeAgent("~/Library/LaunchAgents/1.plist", label);
        m_model.load();
        m_jobs.run();
        m_model.requestDisable(0);
        EXPECT_EQ(shown(), Texts{name});
        EXPECT_EQ(m_model.itemToDisableName().toStdString(), name);
        m_model.confirmDisable();
        EXPECT_EQ(m_model.disabledName().toStdString(), name);
        EXPECT_EQ(m_model.lastDisabledName(), label);
    }
}

TEST_F(StartupViewModelTest, DisablesOnlyWhatIsAskedForAndConfirmed) {
    load();
    m_model.confirmDisable(); // nothing was asked for
    for (const int outside : {-1, 3, std::numeric_limits<int>::max()})
        m_model.requestDisable(outside);
    m_model.setShowDisableConfirm(true);
    EXPECT_FALSE(m_model.showDisableConfirm() || m_model.hasDisabled());
    m_model.requestDisable(1);
    m_model.setShowDisableConfirm(false);
    m_model.confirmDisable();
    EXPECT_EQ(shown(), (Texts{"Every", "One", "Two"}));

    m_model.requestDisable(0);
    m_model.requestDisable(1); // a change of mind
    QSignalSpy removed(m_model.itemsModel(), &QAbstractItemModel::rowsRemoved);
    m_model.confirmDisable();
    EXPECT_EQ(removed.size(), 1);
    EXPECT_EQ(shown(), (Texts{"Every", "Two"}));
    EXPECT_FALSE(m_model.showDisableConfirm());
    EXPECT_EQ(m_model.lastDisabledName(), "One");
    EXPECT_TRUE(m_disk.exists("~/.Trash/1.plist"));
}

TEST_F(StartupViewModelTest, RemovesEveryRowOfTheItem) {
    load();
    std::vector<core::StartupItem> items = m_model.items();
    items.insert(items.begin(), items[1]);
    m_model.itemsModel()->setItems(items);
    core::StartupItem likeOne = items[0];
    likeOne.displayName = "As it was asked for";
    m_model.requestDisable(likeOne);
    m_model.confirmDisable();
    EXPECT_EQ(shown(), (Texts{"Every", "Two"}));
    EXPECT_EQ(m_model.lastDisabledName(), "As it was asked for");
}
