#include "tools/sample_disk/areas.h"
#include "tools/sample_disk/property_lists.h"

#include <string>

namespace SampleDisk {

namespace {

enum class Disabled { unsaid, no, yes };

struct Agent {
    std::string_view file;
    std::string_view label;
    std::string_view program;
    PropertyListFormat format;
    Disabled disabled;
    int ageDays;
};

constexpr PropertyListFormat xml = PropertyListFormat::xml;
constexpr PropertyListFormat binary = PropertyListFormat::binary;

constexpr Agent usersAgents[] = {
    {"com.spotify.webhelper.plist", "com.spotify.webhelper",
     "/Applications/Spotify.app/Contents/MacOS/SpotifyWebHelper", xml, Disabled::unsaid, 3},
    {"com.google.keystone.agent.plist", "com.google.keystone.user.agent",
     "/Users/camille/Library/Google/GoogleSoftwareUpdate/GoogleSoftwareUpdateAgent", xml, Disabled::unsaid,
     6},
    {"com.dropbox.DropboxMacUpdate.agent.plist", "com.dropbox.DropboxMacUpdate.agent",
     "/Users/camille/Library/Dropbox/DropboxMacUpdate", binary, Disabled::unsaid, 4},
    {"com.valvesoftware.steamclean.plist", "com.valvesoftware.steamclean",
     "/Users/camille/Library/Application Support/Steam/SteamApps/steamclean", xml, Disabled::unsaid, 260},
    {"homebrew.mxcl.syncthing.plist", "homebrew.mxcl.syncthing", "/opt/homebrew/opt/syncthing/bin/syncthing",
     xml, Disabled::no, 44},
    {"com.tinyspeck.slack.login.plist", "com.tinyspeck.slackmacgap.login",
     "/Applications/Slack.app/Contents/MacOS/Slack", binary, Disabled::yes, 310},
    {"com.skype.skype.shareagent.plist", "com.skype.skype.shareagent",
     "/Applications/Skype.app/Contents/MacOS/SkypeShare", xml, Disabled::unsaid, 460},
    {"backup-phone.plist", "local.camille.backup-phone", "/Users/camille/bin/backup-phone", xml, Disabled::no,
     845},
    {"com.apple.MRTa.plist", "com.apple.MRTa", "/usr/libexec/MRTa", binary, Disabled::unsaid, 500},
};

constexpr Agent everyonesAgents[] = {
    {"com.microsoft.update.agent.plist", "com.microsoft.update.agent",
     "/Library/Application Support/Microsoft/MAU2.0/Microsoft Update Assistant", binary, Disabled::unsaid,
     25},
    {"com.oracle.java.Java-Updater.plist", "com.oracle.java.Java-Updater",
     "/Library/Internet Plug-Ins/JavaAppletPlugin.plugin/Contents/Resources/Java Updater", xml,
     Disabled::unsaid, 900},
    {"org.virtualbox.vboxwebsrv.plist", "org.virtualbox.vboxwebsrv",
     "/Applications/VirtualBox.app/Contents/MacOS/vboxwebsrv", xml, Disabled::yes, 74},
    {"com.docker.vmnetd.plist", "com.docker.vmnetd", "/Library/PrivilegedHelperTools/com.docker.vmnetd",
     binary, Disabled::unsaid, 31},
    {"com.google.keystone.agent.plist", "com.google.keystone.user.agent",
     "/Library/Google/GoogleSoftwareUpdate/GoogleSoftwareUpdateAgent", xml, Disabled::unsaid, 6},
};

void makeAgent(Folder& folder, const Agent& agent) {
    Properties properties = {
        {"Label", std::string(agent.label)},
        {"ProgramArguments", std::vector<std::string>{std::string(agent.program), "--background"}},
        {"RunAtLoad", true},
    };
    if (agent.disabled != Disabled::unsaid)
        properties.push_back({"Disabled", agent.disabled == Disabled::yes});
    folder.text(agent.file, propertyList(properties, agent.format), agent.ageDays);
}

} // namespace

void makeAgents(Folder& root, Folder& home, Random&) {
    Folder own = home.folder("Library/LaunchAgents", 3);
    for (const Agent& agent : usersAgents)
        makeAgent(own, agent);
    own.text("com.example.cut-short.plist", "bplist00\xD1\x01", 700);
    own.text("com.example.no-label.plist", propertyList({{"RunAtLoad", true}}, xml), 700);
    own.file("notes.txt", 1_KB, 700);

    Folder everyones = root.folder("Library/LaunchAgents", 6);
    for (const Agent& agent : everyonesAgents)
        makeAgent(everyones, agent);
}

} // namespace SampleDisk
