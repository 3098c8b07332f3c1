#include "core/startup/startup_items.h"

#include "core/startup/launch_agents.h"
#include "tests/support/temporary_disk.h"

#include <optional>
#include <string>
#include <tuple>
#include <vector>

#include <unistd.h>

#include <gtest/gtest.h>

using namespace std::string_literals;

namespace {

using Texts = std::vector<std::string>;

const std::string ownFolder = "~/Library/LaunchAgents/";

std::string xml(const std::string& content) {
    return "<plist version=\"1.0\">" + content + "</plist>";
}

std::string agent(const std::string& label, const std::string& disabled = "<false/>",
                  const std::string& program = "") {
    return xml("<dict><key>Label</key><string>" + label + "</string><key>Disabled</key>" + disabled + program
               + "</dict>");
}

class StartupItems : public testing::Test {
protected:
    std::vector<core::StartupItem> scanned() const { return core::LumvaleStartupItems::scan(m_disk.disk()); }

    /// Disables the agent with a tool that fails as for an agent that isn't loaded.
    bool disable(const core::StartupItem& item, const platform::Disk& disk) {
        return bool(core::LumvaleStartupItems::disable(item, disk, launchctl(3)));
    }

    /// Returns a tool that records its arguments and returns this exit status.
    core::LumvaleStartupItems::Launchctl launchctl(int status) {
        return [this, status](const Texts& arguments) {
            m_asked.push_back(arguments);
            return status;
        };
    }

    core::StartupItem own(const std::string& file, const std::string& label = "com.example.Agent") const {
        m_disk.write(ownFolder + file, agent(label));
        return {m_disk.host(ownFolder) + file, label, "Agent", "exp_startup_user", false, false};
    }

    const OrdinaryUser m_user;
    const TemporaryDisk m_disk;
    const platform::Disk m_thisMachine = *platform::Disk::open("/", m_disk.host("~"));
    std::vector<Texts> m_asked;
};

} // namespace

TEST_F(StartupItems, AreTheReadableAgentsOfBothFoldersByTheirNames) {
    EXPECT_TRUE(scanned().empty()); // neither folder exists
    m_disk.write("/Applications/Écho.app/Contents/Info.plist",
                 xml("<dict><key>CFBundleIdentifier</key><string>com.echo.app</string></dict>"));
    m_disk.write(ownFolder + "another name.plist", agent("com.Echo.App.helper"));
    m_disk.write(ownFolder + "com.example.zulu.PLIST", agent("com.example.Zulu", "<true/>"));
    m_disk.write(ownFolder + ".hidden.plist", agent("com.example.hidden", "<integer>1</integer>"));
    m_disk.write(ownFolder + "a.plist", agent("com.example.Twice", "<string>true</string>"));
    m_disk.write(ownFolder + "b.plist", agent("COM.EXAMPLE.TWICE"));
    m_disk.write("/Library/LaunchAgents/d.plist", agent("com.example.tWiCe"));
    m_disk.write("/Library/LaunchAgents/e.plist", agent("net.example.every-one", "<true/>"));
    m_disk.write("/Library/LaunchAgents/apple.plist", agent("COM.APPLE.foo"));
    for (const char* file : {"x.plist.bak", "x.plis", ".plist", "Sub/x.plist", "closed.plist"})
        m_disk.write(ownFolder + file, agent("not.listed."s + file));
    m_disk.write(ownFolder + "empty.plist", agent(""));
    m_disk.write(ownFolder + "number.plist", xml("<dict><key>Label</key><integer>7</integer></dict>"));
    m_disk.write("/opt/tool.list", agent("com.example.linked"));
    m_disk.make({"~/Library/LaunchAgents/pipe.plist |", "~/Library/LaunchAgents/folder.plist/",
                 "~/Library/LaunchAgents/dangling.plist -> missing",
                 "~/Library/LaunchAgents/\xFF.plist -> /opt/tool.list"});
    m_disk.setMode("~/Library/LaunchAgents/closed.plist", 0);

    const std::string own = at(ownFolder);
    const char* const user = "exp_startup_user";
    std::vector<core::StartupItem> expected{
        {own + "another name.plist", "com.Echo.App.helper", "Écho", user, false, false},
        {"/Library/LaunchAgents/e.plist", "net.example.every-one", "Every One", "exp_startup_system", true,
         true},
        {own + ".hidden.plist", "com.example.hidden", "Hidden", user, false, false},
        {own + "\xFF.plist", "com.example.linked", "Linked", user, false, false},
        {own + "a.plist", "com.example.Twice", "Twice", user, false, false},
        {own + "com.example.zulu.PLIST", "com.example.Zulu", "Zulu", user, false, true}};
    expected.front().bundle = "/Applications/Écho.app";
    EXPECT_EQ(scanned(), expected);
    m_disk.setMode("/Library/LaunchAgents", 0);
    expected.erase(expected.begin() + 1);
    EXPECT_EQ(scanned(), expected);
}

TEST_F(StartupItems, AreCalledAfterTheirApplicationOrTheLastPieceOfTheirLabel) {
    const auto app = [](std::string name, std::optional<std::string> identifier) {
        return core::InstalledApp(std::move(name), std::move(identifier), "/Applications/x.app", 0);
    };
    const std::vector<core::InstalledApp> apps{app("Alpha", "com.Example"), app("Beta", "com.example.beta"),
                                               app("Short", "org"), app("Nameless", {}),
                                               app("Exact", "x.yz")};
    const std::pair<const char*, const char*> cases[]{
        {"com.example.beta.daemon", "Alpha"}, // the first application, not the longest identifier
        {"COM.EXAMPLEs.x", "Alpha"},
        {"com.exampl", "Exampl"},
        {"org.tool.helper", "Helper"}, // identifiers of three characters don't count
        {"X.YZ", "Exact"},
        {"net.example.my-tool_agent", "My Tool Agent"},
        {"net.example.x", "net.example.x"},
        {"net.example.e\u0301", "net.example.e\u0301"}, // one character
        {"..net..VSCode..", "Vscode"},
        {"...", "..."}};
    for (const auto& [label, name] : cases)
        EXPECT_EQ(core::LumvaleStartupItems::friendlyName(label, apps), name) << label;
}

TEST_F(StartupItems, HaveTheIconOfTheApplicationWithTheirProgramOrName) {
    m_disk.write("/Applications/Notes.app/Contents/Info.plist",
                 xml("<dict><key>CFBundleIdentifier</key><string>com.example.notes</string></dict>"));
    const std::string arguments = "<key>ProgramArguments</key><array>";
    const std::tuple<const char*, std::string, std::optional<std::string>> cases[]{
        {"com.example.notes.a", "", "/Applications/Notes.app"},
        {"com.example.notes.b",
         "<key>Program</key><string>/Applications/A b.app/Contents/Library/In.app/x</string>" + arguments
             + "<string>/Applications/C.app/x</string></array>",
         "/Applications/A b.app"},
        {"net.example.c", arguments + "<string>/Applications/C.app/x</string><string>-a</string></array>",
         "/Applications/C.app"},
        {"net.example.d", arguments + "<string>/bin/sh</string><string>/C.app/x</string></array>", {}},
        {"net.example.e", "<key>Program</key><string>C.app/x</string>" + arguments + "</array>", {}},
    };
    for (const auto& [label, program, bundle] : cases) {
        m_disk.write(ownFolder + "a.plist", agent(label, "<false/>", program));
        EXPECT_EQ(scanned().front().bundle, bundle) << label;
    }
}

TEST_F(StartupItems, DisablingUnloadsOwnAgentsOfThisMachineAndMovesTheirListsToTheTrash) {
    m_disk.make("~/keep");
    for (const std::string& label :
         {"com.example.Agent"s, "../../../../keep"s, "a b; $(rm keep)\n--help"s, std::string(65'536, 'x')}) {
        EXPECT_TRUE(disable(own("a.plist", label), m_thisMachine));
        EXPECT_EQ(m_asked.back(), (Texts{"bootout", "gui/" + std::to_string(getuid()) + "/" + label}));
    }
    EXPECT_TRUE(m_disk.exists("~/.Trash/a 4.plist") && m_disk.exists("~/keep"));

    m_asked.clear();
    m_disk.write("/Library/LaunchAgents/a.plist", agent("com.example.Shared"));
    m_disk.write(ownFolder + "b.plist", agent("com.example.Agent"));
    const std::vector<core::StartupItem> items = scanned();
    for (const platform::Disk& disk : {m_disk.disk(), m_thisMachine})
        EXPECT_FALSE(disable(items[1], disk)) << "a shared agent";
    EXPECT_TRUE(disable(items[0], m_disk.disk()));
    EXPECT_TRUE(m_asked.empty());
    EXPECT_TRUE(m_disk.exists("/Library/LaunchAgents/a.plist") && m_disk.exists("~/.Trash/b.plist"));

    const core::StartupItem item = own("a.plist");
    m_disk.setMode("~/Library/LaunchAgents", 0500); // the list cannot be moved
    EXPECT_FALSE(core::LumvaleStartupItems::disable(item, m_thisMachine, launchctl(0)));
    EXPECT_EQ(m_asked.back(), (Texts{"bootstrap", "gui/" + std::to_string(getuid()), item.path}));
    EXPECT_FALSE(disable(item, m_thisMachine));
    EXPECT_EQ(m_asked.back().front(), "bootout") << "loads an agent that was not loaded";
}

TEST_F(StartupItems, EnablingPutsThePropertyListBackAndLoadsOnlyAnAgentThatWasUnloaded) {
    const core::StartupItem item = own("a.plist");
    const std::string domain = "gui/" + std::to_string(getuid());
    const struct {
        bool isOfThisMachine;
        int unloading, loading; // exit status
        bool isLoaded;
        Texts asked;
    } cases[]{{true, 0, 0, true, {"bootstrap", domain, item.path}},
              {true, 0, 5, false, {"bootstrap", domain, item.path}},
              {true, 3, 5, true, {"bootout", domain + "/com.example.Agent"}}, // was not loaded
              {false, 0, 5, true, {}}};
    for (const auto& [isOfThisMachine, unloading, loading, isLoaded, asked] : cases) {
        m_asked = {{}};
        const platform::Disk& disk = isOfThisMachine ? m_thisMachine : m_disk.disk();
        core::StartupItem disabledItem = item;
        if (!isOfThisMachine)
            disabledItem.path = at(ownFolder) + "a.plist";
        const auto disabled = core::LumvaleStartupItems::disable(disabledItem, disk, launchctl(unloading));
        ASSERT_TRUE(disabled && disabled->propertyList);
        EXPECT_FALSE(m_disk.exists(ownFolder + "a.plist"));
        const auto enabled = core::LumvaleStartupItems::enable(*disabled, disk, launchctl(loading));
        ASSERT_TRUE(enabled);
        EXPECT_EQ(*enabled, isLoaded);
        EXPECT_EQ(m_asked.back(), asked);
        EXPECT_TRUE(m_disk.exists(ownFolder + "a.plist"));
    }
    EXPECT_FALSE(core::LumvaleStartupItems::enable({}, m_thisMachine, launchctl(0)));
}
