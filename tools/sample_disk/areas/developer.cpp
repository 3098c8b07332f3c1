#include "tools/sample_disk/areas.h"
#include "tools/sample_disk/data/fillings.h"

namespace SampleDisk {

namespace {

constexpr Row developerFiles[] = {
    {"Xcode/DerivedData/Harbour-fkzbqmdwyovhsxctaelg/", 1'486_MB, 5, buildProducts},
    {"Xcode/DerivedData/Atlas-gqhxrwopvmtzcdnlbeys/", 917_MB, 88, buildProducts},
    {"Xcode/DerivedData/Playground-bznwtqhlexukvdcimfoa/", 143_MB, 402, buildProducts},
    {"Xcode/DerivedData/ModuleCache.noindex/", 702_MB, 5, modules},
    {"Xcode/DerivedData/swiftpm-packages/", 265_MB, 88, packageCache},
    {"Xcode/DerivedData/.index-lock/", 2_KB, 5, onlyHidden},
    {"Xcode/UserData/IDEEditorInteractivityHistory", 40_KB, 5},
    {"Xcode/Archives/2023-11-04/Harbour.xcarchive/", 188_MB, 380, buildProducts},
    {"CoreSimulator/Caches/dyld/", 2'310_MB, 33, simulatorRuntime},
    {"CoreSimulator/Caches/com.apple.CoreSimulator.SimDeviceType/", 38_MB, 160, urlCache},
    {"CoreSimulator/Devices/device_set.plist", 9_KB, 33},
};

} // namespace

void makeDeveloper(Folder&, Folder& home, Random& random) {
    Folder developer = home.folder("Library/Developer", 5);
    make(developer, developerFiles, random);
}

} // namespace SampleDisk
