#include "ui/shell/file_manager.h"

#import <AppKit/AppKit.h>

using namespace Qt::StringLiterals;

QString FileManager::showKey() {
    return u"show_in_finder"_s;
}

void FileManager::show(const std::string& hostPath, const std::function<void(bool)>& finished) {
    NSURL* const url = [NSURL fileURLWithFileSystemRepresentation:hostPath.c_str()
                                                      isDirectory:NO
                                                    relativeToURL:nil];
    [NSWorkspace.sharedWorkspace activateFileViewerSelectingURLs:@[ url ]];
    finished(true);
}
