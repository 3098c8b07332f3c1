#include "tools/sample_disk/data/applications.h"
#include "tools/sample_disk/areas.h"
#include "tools/sample_disk/property_lists.h"

#include <optional>
#include <string>

namespace SampleDisk {

namespace {

Filling fillingOf(Kit kit) {
    switch (kit) {
    case Kit::native:
        return nativeBundle;
    case Kit::electron:
        return electronBundle;
    case Kit::suite:
        return suiteBundle;
    }
    return {};
}

std::string infoOf(const Application& application, PropertyListFormat format) {
    const std::string name(application.name);
    Properties info = {
        {"CFBundleExecutable", name},
        {"CFBundleIdentifier", std::string(application.identifier)},
        {"CFBundleName", name.substr(0, name.find(' '))},
        {"CFBundlePackageType", "APPL"},
        {"CFBundleShortVersionString", std::string(application.version)},
        {"NSHighResolutionCapable", true},
        {"CFBundleLocalizations", std::vector<std::string>{"en", "fr", "de"}},
    };
    if (name.find(' ') != std::string::npos) // its short name is no name to show
        info.push_back({"CFBundleDisplayName", name});
    return propertyList(info, format);
}

void makeBundle(Folder& folder, const Application& application, const std::optional<std::string>& info,
                Random& random) {
    const std::string path = std::string(application.name) + ".app/Contents";
    Folder contents = folder.folder(path, application.ageDays);
    if (info)
        contents.text("Info.plist", *info, application.ageDays);
    fill(contents, fillingOf(application.kit), application.bytes, random, application.name);
    if (application.kit == Kit::native)
        contents.link("Frameworks/Sparkle.framework/Versions/Current", "B", application.ageDays);
}

void makeBundles(Folder& folder, std::span<const Application> applications, Random& random) {
    bool binary = false;
    for (const Application& application : applications) {
        const PropertyListFormat format = binary ? PropertyListFormat::binary : PropertyListFormat::xml;
        makeBundle(folder, application, infoOf(application, format), random);
        binary = !binary;
    }
}

/// Bundles whose property list says little or nothing.
void makeOddBundles(Folder& folder, Random& random) {
    constexpr Application unexpanded = {
        "Pixel Ruler", "$(PRODUCT_BUNDLE_IDENTIFIER)", "0.9", 8_MB, 1'240, Kit::native, Storage::library};
    makeBundle(folder, unexpanded, infoOf(unexpanded, PropertyListFormat::xml), random);
    constexpr Application silent = {"Label Printer", "", "", 31_MB, 1'510, Kit::native, Storage::library};
    makeBundle(folder, silent, std::nullopt, random);
    constexpr Application broken = {"Old Tax 2016", "", "", 57_MB, 2'860, Kit::native, Storage::library};
    makeBundle(folder, broken, "<plist><dict><key>CFBundleName", random);
    folder.file("Shouting.APP/Contents/MacOS/Shouting", 2_MB, 900);
    folder.file("Read me.txt", 3_KB, 900);
    folder.link("Moved away.app", "/Volumes/Backup/Moved away.app", 900);
}

/// What an application has written where the Mac wants it, in ~/Library.
void makeRelatedFiles(Folder& library, const Application& application, Random& random) {
    const std::string name(application.name);
    const std::string identifier(application.identifier);
    const int ageDays = random.between(0, application.ageDays);
    const auto folder = [&](const std::string& path, Filling filling, std::int64_t bytes) {
        Folder made = library.folder(path, ageDays);
        fill(made, filling, bytes, random, identifier);
    };
    if (application.storage == Storage::sandbox) {
        folder("Containers/" + identifier, sandboxData, random.between(2, 240) * 1_MB);
        library.folder("Application Scripts/" + identifier, ageDays);
        if (random.chance(50))
            folder("Group Containers/group." + identifier, sharedData, random.between(1, 90) * 1_MB);
        return;
    }
    folder("Application Support/" + name, appSupport, random.between(1, 640) * 1_MB);
    library.file("Preferences/" + identifier + ".plist", random.between(1, 40) * 1_KB, ageDays);
    folder("Saved Application State/" + identifier + ".savedState", windows, random.between(20, 900) * 1_KB);
    if (random.chance(70))
        library.file("HTTPStorages/" + identifier + ".binarycookies", random.between(4, 90) * 1_KB, ageDays);
    if (random.chance(30))
        folder("WebKit/" + identifier, webData, random.between(1, 30) * 1_MB);
    if (random.chance(25))
        library.file("Preferences/ByHost/" + identifier + "." + random.uuid() + ".plist", 2_KB, ageDays);
    if (random.chance(25))
        library.file("Cookies/" + identifier + ".binarycookies", 9_KB, ageDays);
    if (random.chance(10))
        library.file("Autosave Information/" + identifier + ".plist", 4_KB, ageDays);
}

} // namespace

void makeApplications(Folder& root, Folder& home, Random& random) {
    Folder shared = root.folder("Applications", 1);
    makeBundles(shared, installedApplications, random);
    makeBundles(shared, applicationsOfTheMac, random);
    makeOddBundles(shared, random);
    shared.link("Safari.app", "../System/Cryptexes/App/System/Applications/Safari.app", 200);
    Folder below = shared.folder("Utilities", 200);
    makeBundles(below, utilities, random);

    Folder own = home.folder("Applications", 66);
    makeBundles(own, ownApplications, random);
    own.file("Chrome Apps.localized/.localized", 0, 300);

    Folder library = home.folder("Library", 0);
    for (const Application& application : installedApplications)
        makeRelatedFiles(library, application, random);
    makeRelatedFiles(library, ownApplications[0], random);
    makeRelatedFiles(library, ownApplications[2], random);
    make(home, rarerFiles, random);
    make(root, rarerSharedFiles, random);
}

} // namespace SampleDisk
