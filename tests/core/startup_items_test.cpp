#include "core/startup/startup_items.h"

#include "core/startup/launch_agents.h"
#include "tests/support/temporary_disk.h"

#include <string>
#include <vector>

#include <sys/types.h>
#include <unistd.h>

#include <gtest/gtest.h>

using namespace std::string_literals;

// The linker sends the product's calls here, so that listings can be counted.

namespace {
int listings = 0;
}

extern "C" {
ssize_t __real_getdents64(int, void*, size_t);
ssize_t __wrap_getdents64(int folder, void* buffer, size_t size) {
    ++listings;
    return __real_getdents64(folder, buffer, size);
}
}

namespace {

using Texts = std::vector<std::string>;

std::string xml(const std::string& content) {
    return "<plist version=\"1.0\">" + content + "</plist>";
}

std::string agent(const std::string& label, const std::string& more = "") {
    return xml("<dict><key>Label</key><string>" + label + "</string>" + more + "</dict>");
}

std::string disabled(const std::string& value) {
    return "<key>Disabled</key>" + value;
}

void makeApp(const TemporaryDisk& disk, const std::string& name, const std::string& identifier) {
    disk.write("/Applications/" + name + ".app/Contents/Info.plist",
               xml("<dict><key>CFBundleIdentifier</key><string>" + identifier + "</string></dict>"));
}

class StartupItems : public testing::Test {
protected:
    void makeOwn(const std::string& file, const std::string& content) const {
        m_disk.write("~/Library/LaunchAgents/" + file, content);
    }
    void makeEveryones(const std::string& file, const std::string& content) const {
        m_disk.write("/Library/LaunchAgents/" + file, content);
    }

    std::vector<core::StartupItem> scanned() const { return core::LumvaleStartupItems::scan(m_disk.disk()); }

    Texts labels() const {
        Texts texts;
        for (const core::StartupItem& item : scanned())
            texts.push_back(item.label);
        return texts;
    }

    const TemporaryDisk m_disk;
};

} // namespace

TEST_F(StartupItems, AreTheAgentsOfBothFoldersByTheirNames) {
    makeApp(m_disk, "Écho", "com.echo.app");
    makeOwn("another name.plist", agent("com.Echo.App.helper"));
    makeOwn("com.example.zulu.PLIST", agent("com.example.Zulu", disabled("<true/>")));
    makeOwn("com.example.tie.plist", agent("org.example.tie", disabled("<false/>")));
    makeOwn(".hidden.plist", agent("com.example.hidden", disabled("<integer>1</integer>")));
    makeOwn("a.plist", agent("com.example.Twice", disabled("<string>true</string>")));
    makeOwn("b.plist", agent("COM.EXAMPLE.TWICE"));
    makeEveryones("com.example.tie.plist", agent("com.example.tie", disabled("<dict><true/></dict>")));
    makeEveryones("d.plist", agent("com.example.tWiCe"));
    makeEveryones("e.plist", agent("net.example.every-one", disabled("<true/>")));
    makeEveryones("f.plist", agent("net.example.dict", disabled("<dict><key>Disabled</key><true/></dict>")));

    for (const char* apples : {"com.apple.Foo", "COM.APPLE.foo"})
        makeEveryones(apples + ".plist"s, agent(apples));
    for (const char* file : {"x.plist.bak", "x.plis", "plist", ".plist", "x.plist.", "Sub/x.plist"})
        makeOwn(file, agent("not.listed."s + file));
    m_disk.write("/Library/LaunchDaemons/x.plist", agent("not.listed.daemon"));
    m_disk.write("/System/Library/LaunchAgents/x.plist", agent("not.listed.systems"));

    const std::string own = at("~/Library/LaunchAgents/");
    const std::string every = "/Library/LaunchAgents/";
    const char* const user = "exp_startup_user";
    const char* const system = "exp_startup_system";
    const std::vector<core::StartupItem> expected{
        {every + "f.plist", "net.example.dict", "Dict", system, true, false},
        {own + "another name.plist", "com.Echo.App.helper", "Écho", user, false, false},
        {every + "e.plist", "net.example.every-one", "Every One", system, true, true},
        {own + ".hidden.plist", "com.example.hidden", "Hidden", user, false, false},
        {own + "com.example.tie.plist", "org.example.tie", "Tie", user, false, false},
        {own + "a.plist", "com.example.Twice", "Twice", user, false, false},
        {own + "com.example.zulu.PLIST", "com.example.Zulu", "Zulu", user, false, true}};
    EXPECT_EQ(scanned(), expected) << testing::PrintToString(labels());

    // Applications are known by their names alone: none of them is listed.
    listings = 0;
    scanned();
    const int before = listings;
    for (const char* folder : {"Resources", "Frameworks/a", "Frameworks/b", "MacOS"})
        m_disk.make("/Applications/Écho.app/Contents/"s + folder + "/file 10");
    listings = 0;
    scanned();
    EXPECT_EQ(listings, before);
}

TEST_F(StartupItems, PassOverWhatIsNoAgentOrCannotBeReadAndNeverStop) {
    const OrdinaryUser user;
    EXPECT_EQ(labels(), Texts{}); // neither folder is there
    const std::string good = agent("com.example.good");
    const std::string longLabel(65'536, 'y');
    const std::pair<const char*, std::string> lists[] = {
        {"cut short", good.substr(0, good.size() / 2)},
        {"an array", xml("<array><string>Label</string><string>Label</string></array>")},
        {"empty", ""},
        {"empty label", agent("")},
        {"no label", xml("<dict/>")},
        {"label is a number", xml("<dict><key>Label</key><integer>7</integer></dict>")},
        {"label in the wrong place", xml("<dict><key>a</key>" + good + "</dict>")},
        {"closed", agent("com.example.closed")},
        {"a\xFF", agent("com.example.bytes")},
        {"long", agent(longLabel)},
        {"good", good},
        {"way up", agent("../../../tmp/x")}};
    for (const auto& [name, content] : lists)
        makeOwn(name + ".plist"s, content);
    makeEveryones("every.plist", agent("com.example.every"));
    m_disk.write("/opt/tool.list", agent("com.example.linked"));
    m_disk.make({"~/Library/LaunchAgents/pipe.plist |", "~/Library/LaunchAgents/folder.plist/",
                 "~/Library/LaunchAgents/dangling.plist -> missing",
                 "~/Library/LaunchAgents/self.plist -> self.plist",
                 "~/Library/LaunchAgents/linked.plist -> /opt/tool.list"});
    m_disk.setMode("~/Library/LaunchAgents/closed.plist", 0);
    Texts expected{"../../../tmp/x",   "com.example.bytes",  "com.example.every",
                   "com.example.good", "com.example.linked", longLabel};
    EXPECT_EQ(labels(), expected);
    m_disk.setMode("/Library/LaunchAgents", 0);
    expected.erase(expected.begin() + 2);
    EXPECT_EQ(labels(), expected);
}

TEST(StartupItem, HasANameThatPeopleKnow) {
    const auto app = [](std::string name, std::optional<std::string> identifier) {
        return core::InstalledApp(std::move(name), std::move(identifier), "/Applications/x.app", 0);
    };
    const std::vector<core::InstalledApp> apps{app("Alpha", "com.Example"), app("Beta", "com.example.beta"),
                                               app("Short", "org"),         app("Wide", "日本語"),
                                               app("Nameless", {}),         app("Empty", ""),
                                               app("Exact", "x.yz"),        app("", "no.name.app")};
    const std::pair<const char*, const char*> cases[]{
        {"com.example.beta.daemon", "Alpha"}, // the first in the list, not the longest
        {"COM.EXAMPLEs.x", "Alpha"},          // no boundary
        {"com.exampl", "Exampl"},
        {"org.tool.helper", "Helper"}, // three characters are too few
        {"日本語.助手", "助手"},
        {"X.YZ", "Exact"},
        {"no.name.app.agent", ""},
        {"net.example.my-tool_agent", "My Tool Agent"},
        {"net.example.x", "net.example.x"},
        {"net.example.e\u0301", "net.example.e\u0301"}, // one character to the eye
        {"..net..VSCode..", "Vscode"},
        {"a", "a"},
        {"...", "..."},
        {"net.Élan/ÉTÉ", "Élan/Été"},
    };
    for (const auto& [label, name] : cases)
        EXPECT_EQ(core::LumvaleStartupItems::friendlyName(label, apps), name) << label;
}

namespace {

/// Disables agents of a home on this machine's own disk, with a tool that only notes what it is asked.
class Disabling : public StartupItems {
protected:
    core::StartupItem own(const std::string& file, const std::string& label = "com.example.Agent") const {
        makeOwn(file, agent(label));
        return {
            m_disk.host("~/Library/LaunchAgents/") + file, label, "Agent", "exp_startup_user", false, false};
    }

    bool disable(const core::StartupItem& item, const platform::Disk& disk) {
        return core::LumvaleStartupItems::disable(item, disk, [this](const Texts& arguments) {
            m_asked.push_back(arguments);
            return 3; // as for an agent that isn't loaded
        });
    }

    const OrdinaryUser m_user;
    const platform::Disk m_thisMachine = *platform::Disk::open("/", m_disk.host("~"));
    std::vector<Texts> m_asked;
};

} // namespace

TEST_F(Disabling, UnloadsTheAgentAndMovesItsListToTheTrash) {
    m_disk.make("~/keep");
    for (const std::string& label :
         {"com.example.Agent"s, "../../../../keep"s, "a b; $(rm keep)\n--help"s, std::string(65'536, 'x')}) {
        EXPECT_TRUE(disable(own("a.plist", label), m_thisMachine));
        EXPECT_EQ(m_asked.back(), (Texts{"bootout", "gui/" + std::to_string(getuid()) + "/" + label}));
        EXPECT_FALSE(m_disk.exists("~/Library/LaunchAgents/a.plist"));
    }
    EXPECT_EQ(m_asked.size(), 4U);
    EXPECT_TRUE(m_disk.exists("~/.Trash/a.plist") && m_disk.exists("~/.Trash/a 4.plist"));
    EXPECT_TRUE(m_disk.exists("~/keep"));

    // With the system's tool, whether there is one or not.
    if (access("/bin/launchctl", F_OK) != 0) {
        EXPECT_EQ(core::LumvaleStartupItems::runLaunchctl({"help"}), -1);
    }
    EXPECT_TRUE(
        core::LumvaleStartupItems::disable(own("b.plist", "com.example.lumvale-test"), m_thisMachine));
    EXPECT_TRUE(m_disk.exists("~/.Trash/b.plist"));
}

TEST_F(Disabling, LeavesEveryonesAgentsAloneAndRunsNothingForADiskOfAnotherMachine) {
    makeEveryones("a.plist", agent("com.example.Everyones"));
    makeOwn("b.plist", agent("com.example.Agent"));
    const core::StartupItem everyones = scanned()[1];
    EXPECT_FALSE(disable(everyones, m_disk.disk()));
    EXPECT_FALSE(disable(everyones, m_thisMachine));
    EXPECT_TRUE(disable(scanned()[0], m_disk.disk()));
    EXPECT_TRUE(m_asked.empty());
    EXPECT_TRUE(m_disk.exists("/Library/LaunchAgents/a.plist") && m_disk.exists("~/.Trash/b.plist"));
}

TEST_F(Disabling, SaysWhenTheListStaysThoughTheAgentWasUnloaded) {
    core::StartupItem item = own("a.plist");
    m_disk.setMode("~/Library/LaunchAgents", 0500);
    EXPECT_FALSE(disable(item, m_thisMachine));
    m_disk.setMode("~/Library/LaunchAgents", 0700);
    item.path = m_disk.host("~/Library");
    EXPECT_FALSE(disable(item, m_thisMachine));
    EXPECT_TRUE(m_disk.exists("~/Library/LaunchAgents/a.plist"));
    EXPECT_EQ(m_asked.size(), 2U);
}
