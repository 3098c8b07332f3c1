#include "tools/sample_disk/data/agents.h"
#include "tools/sample_disk/areas.h"

#include <optional>
#include <string>

namespace SampleDisk {

namespace {

std::optional<PropertyValue> valueOf(Disabled disabled) {
    switch (disabled) {
    case Disabled::unsaid:
        return std::nullopt;
    case Disabled::no:
        return false;
    case Disabled::yes:
        return true;
    case Disabled::asNumber:
        return 1U;
    case Disabled::asWord:
        return std::string("YES");
    case Disabled::asDictionary: // as the system notes it elsewhere
        return Flags{{"Disabled", true}};
    }
    return std::nullopt;
}

void makeAgent(Folder& folder, const Agent& agent) {
    Properties properties = {
        {"Label", std::string(agent.label)},
        {"ProgramArguments", std::vector<std::string>{std::string(agent.program), "--background"}},
        {"RunAtLoad", true},
        {"KeepAlive", Flags{{"SuccessfulExit", false}}},
        {"ThrottleInterval", 30U},
    };
    if (const std::optional<PropertyValue> disabled = valueOf(agent.disabled))
        properties.push_back({"Disabled", *disabled});
    folder.text(agent.file, propertyList(properties, agent.format), agent.ageDays);
}

} // namespace

void makeAgents(Folder& root, Folder& home, Random&) {
    constexpr Agent editor = {"homebrew.mxcl.emacs.plist",
                              "homebrew.mxcl.emacs",
                              "/opt/homebrew/opt/emacs-plus/bin/emacs",
                              xml,
                              Disabled::unsaid,
                              52};
    Folder installed = root.folder("opt/homebrew/opt/emacs-plus", editor.ageDays);
    makeAgent(installed, editor);

    Folder own = home.folder("Library/LaunchAgents", 3);
    for (const Agent& agent : usersAgents)
        makeAgent(own, agent);
    own.link(editor.file, "/opt/homebrew/opt/emacs-plus/" + std::string(editor.file), editor.ageDays);
    own.link("com.backup.plist", "/Volumes/Backup/com.backup.plist", 900);
    own.text("com.example.cut-short.plist", "bplist00\xD1\x01", 700);
    own.text("com.example.no-label.plist", propertyList({{"RunAtLoad", true}}, xml), 700);
    own.text("com.example.two-labels.plist",
             propertyList({{"Label", std::vector<std::string>{"one", "two"}}}, binary), 700);
    own.file("notes.txt", 1_KB, 700);

    Folder everyones = root.folder("Library/LaunchAgents", 6);
    for (const Agent& agent : everyonesAgents)
        makeAgent(everyones, agent);
}

} // namespace SampleDisk
