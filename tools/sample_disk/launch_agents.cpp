#include "tools/sample_disk/launch_agents.h"

#include "tools/sample_disk/property_list.h"

#include <span>
#include <string>

namespace sample_disk {

namespace {

struct Agent {
    std::string_view label, program;
    int ageDays;
    std::string_view disabled = {}; ///< the XML of its key "Disabled"; only Booleans have a meaning
    std::string_view file = {};     ///< empty: the label with ".plist"
};

constexpr Agent ofTheUser[] = {
    // Agents of installed applications.
    {"com.1password.1password-launcher", "/Applications/1Password.app/Contents/Library/Launcher", 24},
    {"com.figma.desktop-agent", "/Users/camille/Library/Figma/FigmaAgent", 19, "<false/>"},
    {"com.spotify.client.webhelper", "/Applications/Spotify.app/Contents/MacOS/SpotifyWebHelper", 3},
    {"com.tinyspeck.slackmacgap.login", "/Applications/Slack.app/Contents/MacOS/Slack", 310, "<true/>"},
    {"org.zotero.zotero.connector-server", "/Users/camille/Applications/Zotero.app/zotero", 66},
    // Agents of other programs, some of them removed.
    {"local.camille.backup-phone", "/Users/camille/bin/backup-phone", 845, "<false/>", "backup.plist"},
    {"com.DuetUSBDaemon", "/Users/camille/Library/Duet/DuetUSBDaemon", 980},
    {"com.dropbox.DropboxMacUpdate.agent", "/Users/camille/Library/Dropbox/DropboxMacUpdate", 4},
    {"com.google.keystone.user.agent", "/Users/camille/Library/Google/GoogleUpdate", 6},
    {"com.google.keystone.user.agent", "/Users/camille/Library/Google/Update", 400, {}, "agent 2.plist"},
    {"com.skype.skype.shareagent", "/Applications/Skype.app/SkypeShare", 460, "<string>YES</string>"},
    {"com.synology.Synology Cloud Station", "/Users/camille/Library/CloudStation/launcher", 720},
    {"com.valvesoftware.steamclean", "/Users/camille/Library/Steam/steamclean", 260},
    {"homebrew.mxcl.syncthing", "/opt/homebrew/opt/syncthing/bin/syncthing", 44, "<false/>"},
    {"limit.maxfiles", "/bin/launchctl", 1'310, "<integer>1</integer>"},
    {"startup", "/Users/camille/bin/startup", 1'400, {}, "my.startup.plist"},
    {"local.camille.n", "/Users/camille/bin/night", 610, "<dict/>", "night light.plist"},
    // Not listed: of the system, without a label, in another folder.
    {"com.apple.MRTa", "/usr/libexec/MRTa", 500},
    {"", "/Users/camille/bin/try", 1'401, {}, "untitled.plist"},
    {"com.evernote.EvernoteHelper", "/Applications/Evernote.app/Helper", 890, {}, "Off/evernote.plist"},
};

constexpr Agent ofAllUsers[] = {
    {"com.docker.docker.helper", "/Applications/Docker.app/Contents/MacOS/com.docker.helper", 31},
    {"com.google.Keystone.User.Agent", "/Library/Google/GoogleSoftwareUpdate/Agent", 6},
    {"com.microsoft.update.agent", "/Library/Application Support/Microsoft/Update Assistant", 25},
    {"com.oracle.java.Java-Updater", "/Library/Internet Plug-Ins/Java Updater", 900},
    {"jp.co.canon.BackGrounder", "/Library/Printers/Canon/BackGrounder", 1'650, {}, "CANON.PLIST"},
    {"org.gpgtools.macgpg2.shutdown-gpg-agent", "/usr/local/MacGPG2/libexec/shutdown-gpg-agent", 330},
    {"org.virtualbox.app.VirtualBox.vboxwebsrv", "/Applications/VirtualBox.app/vboxwebsrv", 74, "<true/>"},
    {"com.Apple.quicklook.helper", "/usr/libexec/quicklookd", 200},
};

void makeAgents(DiskWriter& disk, const std::string& folder, std::span<const Agent> agents) {
    bool isBinary = false;
    for (const Agent& agent : agents) {
        std::string entries = textEntry("Label", agent.label) + "<key>RunAtLoad</key><true/>";
        entries.append("<key>ProgramArguments</key><array><string>").append(agent.program);
        entries.append("</string><string>--background</string></array>");
        if (!agent.disabled.empty())
            entries.append("<key>Disabled</key>").append(agent.disabled);
        const std::string file =
            agent.file.empty() ? std::string(agent.label) + ".plist" : std::string(agent.file);
        disk.text(folder + file,
                  propertyList(entries, isBinary ? PropertyListFormat::binary : PropertyListFormat::xml),
                  agent.ageDays);
        isBinary = !isBinary;
    }
}

} // namespace

void makeLaunchAgents(DiskWriter& disk, Random&) {
    const std::string folder = "~/Library/LaunchAgents/";
    makeAgents(disk, folder, ofTheUser);
    makeAgents(disk, "Library/LaunchAgents/", ofAllUsers);
    // Packages of Homebrew link their lists instead of copying them.
    constexpr Agent editor = {"homebrew.mxcl.emacs", "/opt/homebrew/opt/emacs-plus/bin/emacs", 52};
    makeAgents(disk, "opt/homebrew/opt/emacs-plus/", std::span(&editor, 1));
    disk.symbolicLink(folder + "homebrew.mxcl.emacs.plist",
                      "/opt/homebrew/opt/emacs-plus/homebrew.mxcl.emacs.plist", 52);
    disk.symbolicLink(folder + "com.backup.plist", "/Volumes/Backup/com.backup.plist", 900);
    disk.text(folder + "com.example.cut-short.plist", "bplist00\xD1\x01", 700);
    disk.file(folder + "notes.txt", 1'000, 700);
}

} // namespace sample_disk
