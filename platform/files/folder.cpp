#include "platform/files/folder.h"

#include "platform/files/folder_reader.h"
#include "platform/files/path.h"

#include <algorithm>

namespace platform {

Result<std::vector<std::string>> listFolder(const Disk& disk, std::string_view path, Hidden hidden,
                                            Progress* progress) {
    const Result<Descriptor> folder = disk.openFolder(path);
    if (!folder && progress && isDescriptorShortage(folder.error()))
        progress->addUnreadFolders(1);
    if (!folder)
        return fileError(FileAction::read, folder.error(), lastComponent(path));
    std::vector<std::string> names;
    FolderReader reader;
    reader.start(folder->number());
    while (const FolderEntry* entry = isStopped(progress) ? nullptr : reader.next()) {
        if (hidden == Hidden::include || !entry->isHidden)
            names.emplace_back(entry->name);
    }
    if (reader.failure() != 0)
        return fileError(FileAction::read, reader.failure(), lastComponent(path));
    if (!isStopped(progress))
        std::sort(names.begin(), names.end());
    return names;
}

} // namespace platform
