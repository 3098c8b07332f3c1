#pragma once

#include "tools/sample_disk/property_lists.h"

#include <string_view>

namespace SampleDisk {

/// What a list says about being disabled, in the ways that occur; only Booleans mean something.
enum class Disabled { unsaid, no, yes, asNumber, asWord, asDictionary };

struct Agent {
    std::string_view file;
    std::string_view label;
    std::string_view program;
    PropertyListFormat format;
    Disabled disabled;
    int ageDays;
};

inline constexpr PropertyListFormat xml = PropertyListFormat::xml;
inline constexpr PropertyListFormat binary = PropertyListFormat::binary;

inline constexpr Agent usersAgents[] = {
    // Of applications that are installed.
    {"com.1password.1password-launcher.plist", "com.1password.1password-launcher",
     "/Applications/1Password.app/Contents/Library/LoginItems/1Password Launcher", binary, Disabled::unsaid,
     24},
    {"com.figma.agent.plist", "com.figma.desktop-agent",
     "/Users/camille/Library/Application Support/Figma/FigmaAgent", xml, Disabled::no, 19},
    {"com.spotify.webhelper.plist", "com.spotify.client.webhelper",
     "/Applications/Spotify.app/Contents/MacOS/SpotifyWebHelper", xml, Disabled::unsaid, 3},
    {"com.tinyspeck.slack.login.plist", "com.tinyspeck.slackmacgap.login",
     "/Applications/Slack.app/Contents/MacOS/Slack", binary, Disabled::yes, 310},
    {"org.zotero.connector.plist", "org.zotero.zotero.connector-server",
     "/Users/camille/Applications/Zotero.app/Contents/MacOS/zotero", xml, Disabled::unsaid, 66},

    // Of what has no application, or none any more.
    {"backup-phone.plist", "local.camille.backup-phone", "/Users/camille/bin/backup-phone", xml, Disabled::no,
     845},
    {"com.DuetUSBDaemon.plist.plist", "com.DuetUSBDaemon", "/Users/camille/Library/Duet/DuetUSBDaemon", xml,
     Disabled::unsaid, 980},
    {"com.dropbox.DropboxMacUpdate.agent.plist", "com.dropbox.DropboxMacUpdate.agent",
     "/Users/camille/Library/Dropbox/DropboxMacUpdate", binary, Disabled::unsaid, 4},
    {"com.google.keystone.agent.plist", "com.google.keystone.user.agent",
     "/Users/camille/Library/Google/GoogleSoftwareUpdate/GoogleSoftwareUpdateAgent", xml, Disabled::unsaid,
     6},
    {"com.google.keystone.agent 2.plist", "com.google.keystone.user.agent",
     "/Users/camille/Library/Google/GoogleSoftwareUpdate/GoogleSoftwareUpdateAgent", xml, Disabled::unsaid,
     400},
    {"com.skype.skype.shareagent.plist", "com.skype.skype.shareagent",
     "/Applications/Skype.app/Contents/MacOS/SkypeShare", xml, Disabled::asWord, 460},
    {"com.synology.Synology Cloud Station.plist", "com.synology.Synology Cloud Station",
     "/Users/camille/Library/Application Support/CloudStation/launcher", binary, Disabled::unsaid, 720},
    {"com.valvesoftware.steamclean.plist", "com.valvesoftware.steamclean",
     "/Users/camille/Library/Application Support/Steam/SteamApps/steamclean", xml, Disabled::unsaid, 260},
    {"homebrew.mxcl.syncthing.plist", "homebrew.mxcl.syncthing", "/opt/homebrew/opt/syncthing/bin/syncthing",
     xml, Disabled::no, 44},
    {"limit.maxfiles.plist", "limit.maxfiles", "/bin/launchctl", xml, Disabled::asNumber, 1'310},
    {"my.startup.plist", "startup", "/Users/camille/bin/startup", xml, Disabled::unsaid, 1'400},
    {"night light.plist", "local.camille.n", "/Users/camille/bin/night", xml, Disabled::asDictionary, 610},

    // Of the system, which is left out.
    {"com.apple.MRTa.plist", "com.apple.MRTa", "/usr/libexec/MRTa", binary, Disabled::unsaid, 500},
    // Of nothing: its label says so.
    {"untitled.plist", "", "/Users/camille/bin/try", xml, Disabled::unsaid, 1'401},
    // Put away, one as a copy and one in a folder.
    {"com.adobe.AdobeCreativeCloud.plist.bak", "com.adobe.AdobeCreativeCloud",
     "/Applications/Utilities/Adobe Creative Cloud/ACC/Creative Cloud", xml, Disabled::unsaid, 1'020},
    {"Off/com.evernote.EvernoteHelper.plist", "com.evernote.EvernoteHelper",
     "/Applications/Evernote.app/Contents/Library/LoginItems/EvernoteHelper", binary, Disabled::yes, 890},
};

inline constexpr Agent everyonesAgents[] = {
    {"com.docker.helper.plist", "com.docker.docker.helper",
     "/Applications/Docker.app/Contents/MacOS/com.docker.helper", binary, Disabled::unsaid, 31},
    {"com.google.keystone.agent.plist", "com.google.Keystone.User.Agent",
     "/Library/Google/GoogleSoftwareUpdate/GoogleSoftwareUpdateAgent", xml, Disabled::unsaid, 6},
    {"com.microsoft.update.agent.plist", "com.microsoft.update.agent",
     "/Library/Application Support/Microsoft/MAU2.0/Microsoft Update Assistant", binary, Disabled::unsaid,
     25},
    {"com.oracle.java.Java-Updater.plist", "com.oracle.java.Java-Updater",
     "/Library/Internet Plug-Ins/JavaAppletPlugin.plugin/Contents/Resources/Java Updater", xml,
     Disabled::unsaid, 900},
    {"JP.CO.CANON.BACKGROUNDER.PLIST", "jp.co.canon.CUPSCAPT.BackGrounder",
     "/Library/Printers/Canon/CUPSCAPT/BackGrounder", xml, Disabled::unsaid, 1'650},
    {"org.gpgtools.macgpg2.shutdown-gpg-agent.plist", "org.gpgtools.macgpg2.shutdown-gpg-agent",
     "/usr/local/MacGPG2/libexec/shutdown-gpg-agent", xml, Disabled::unsaid, 330},
    {"org.pqrs.karabiner.karabiner_console_user_server.plist",
     "org.pqrs.karabiner.karabiner_console_user_server",
     "/Library/Application Support/org.pqrs/Karabiner-Elements/karabiner_console_user_server", xml,
     Disabled::unsaid, 175},
    {"org.virtualbox.vboxwebsrv.plist", "org.virtualbox.app.VirtualBox.vboxwebsrv",
     "/Applications/VirtualBox.app/Contents/MacOS/vboxwebsrv", xml, Disabled::yes, 74},
    {"com.apple.quicklook.helper.plist", "com.Apple.quicklook.helper", "/usr/libexec/quicklookd", xml,
     Disabled::unsaid, 200},
};

} // namespace SampleDisk
