#include "platform/photos/system_photo_library.h"

#include <AppKit/AppKit.h>
#include <Photos/Photos.h>

#include <cerrno>
#include <cstdlib>
#include <deque>
#include <span>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

namespace platform {

namespace {

/// Returns an empty string for text that isn't Unicode.
std::string bytes(NSString* string) {
    const char* const text = string.UTF8String;
    return text == nullptr ? std::string() : std::string(text);
}

/// Returns nil for bytes that aren't UTF-8.
NSString* stringOf(std::string_view bytes) {
    return [[NSString alloc] initWithBytes:bytes.data() length:bytes.size() encoding:NSUTF8StringEncoding];
}

// Permission

PhotoAuthorization authorization(PHAuthorizationStatus status) {
    switch (status) {
    case PHAuthorizationStatusNotDetermined:
        return PhotoAuthorization::notDetermined;
    case PHAuthorizationStatusRestricted:
        return PhotoAuthorization::restricted;
    case PHAuthorizationStatusAuthorized:
        return PhotoAuthorization::authorized;
    case PHAuthorizationStatusLimited:
        return PhotoAuthorization::limited;
    case PHAuthorizationStatusDenied:
        break;
    }
    return PhotoAuthorization::denied;
}

PhotoAuthorization status() {
    @autoreleasepool {
        return authorization([PHPhotoLibrary authorizationStatusForAccessLevel:PHAccessLevelReadWrite]);
    }
}

PhotoAuthorization request() {
    @autoreleasepool {
        // The system ends a program that asks without this text in its bundle.
        if ([NSBundle.mainBundle objectForInfoDictionaryKey:@"NSPhotoLibraryUsageDescription"] == nil)
            return status();
        __block PHAuthorizationStatus answer = PHAuthorizationStatusDenied;
        dispatch_semaphore_t const answered = dispatch_semaphore_create(0);
        [PHPhotoLibrary requestAuthorizationForAccessLevel:PHAccessLevelReadWrite
                                                   handler:^(PHAuthorizationStatus given) {
                                                     answer = given;
                                                     dispatch_semaphore_signal(answered);
                                                   }];
        dispatch_semaphore_wait(answered, DISPATCH_TIME_FOREVER);
        return authorization(answer);
    }
}

// Assets

/// Returns the size in bytes. The key isn't documented: a later system may not know it, which throws.
std::optional<std::int64_t> fileSize(PHAssetResource* resource) {
    @try {
        id const value = [resource valueForKey:@"fileSize"];
        if ([value isKindOfClass:NSNumber.class] && !CFNumberIsFloatType((__bridge CFNumberRef)value))
            return [value longLongValue];
    } @catch (NSException*) {
        return std::nullopt;
    }
    return std::nullopt;
}

/// Returns what `visit` returns; true for an asset that isn't visited.
bool visitAsset(PHAsset* asset, const std::function<bool(const PhotoAsset&)>& visit) {
    const std::string identifier = bytes(asset.localIdentifier);
    if (identifier.empty())
        return true;
    std::deque<std::string> names;
    std::vector<PhotoResource> resources;
    for (PHAssetResource* resource in [PHAssetResource assetResourcesForAsset:asset])
        resources.push_back({static_cast<PhotoResourceType>(resource.type),
                             names.emplace_back(bytes(resource.originalFilename)), fileSize(resource)});
    PhotoAsset found{identifier,
                     static_cast<PhotoMediaType>(asset.mediaType),
                     static_cast<std::int64_t>(asset.pixelWidth),
                     static_cast<std::int64_t>(asset.pixelHeight),
                     std::nullopt,
                     asset.favorite == YES,
                     resources};
    if (NSDate* const created = asset.creationDate)
        found.creationDate = Date(Date::duration(created.timeIntervalSince1970));
    return visit(found);
}

bool visitAssets(const std::function<bool(const PhotoAsset&)>& visit) {
    @autoreleasepool {
        @try {
            PHFetchOptions* const options = [PHFetchOptions new];
            options.includeHiddenAssets = NO;
            PHFetchResult<PHAsset*>* const assets = [PHAsset fetchAssetsWithOptions:options];
            for (NSUInteger i = 0; i < assets.count; ++i) {
                @autoreleasepool {
                    if (!visitAsset([assets objectAtIndex:i], visit))
                        return false;
                }
            }
            // Set when the library was moved or replaced, or its volume ejected.
            return PHPhotoLibrary.sharedPhotoLibrary.unavailabilityReason == nil;
        } @catch (NSException*) {
            return false;
        }
    }
}

PHFetchResult<PHAsset*>* assetsWith(NSArray<NSString*>* identifiers) {
    return [PHAsset fetchAssetsWithLocalIdentifiers:identifiers options:nil];
}

// Pictures

/// Returns a file without a name that contains the bytes, or an empty descriptor.
Descriptor namelessFile(NSData* content) {
    std::string path(
        [NSTemporaryDirectory() stringByAppendingPathComponent:@"Lumvale.XXXXXX"].fileSystemRepresentation);
    Descriptor file(mkostemp(path.data(), O_CLOEXEC));
    if (!file)
        return {};
    unlink(path.c_str());
    const char* next = static_cast<const char*>(content.bytes);
    for (std::size_t left = content.length; left > 0;) {
        const ssize_t written = write(file.number(), next, left);
        if (written < 0 && errno != EINTR)
            return {};
        const std::size_t count = written < 0 ? 0 : static_cast<std::size_t>(written);
        next += count;
        left -= count;
    }
    return file;
}

NSData* pngOf(NSImage* image) {
    CGImageRef const pixels = [image CGImageForProposedRect:nullptr context:nil hints:nil];
    if (pixels == nullptr)
        return nil;
    return [[[NSBitmapImageRep alloc] initWithCGImage:pixels] representationUsingType:NSBitmapImageFileTypePNG
                                                                           properties:@{}];
}

PhotoPicture picture(std::string_view localIdentifier, PhotoPictureKind kind) {
    const bool isThumbnail = kind == PhotoPictureKind::thumbnail;
    const CGFloat side = isThumbnail ? 192 : 2560; // pixels, as thumbnails and previews are drawn
    @autoreleasepool {
        @try {
            NSString* const identifier = stringOf(localIdentifier);
            PHAsset* const asset = identifier == nil ? nil : assetsWith(@[ identifier ]).firstObject;
            if (asset == nil)
                return {};
            PHImageRequestOptions* const options = [PHImageRequestOptions new];
            options.networkAccessAllowed = NO;
            options.deliveryMode = kind == PhotoPictureKind::original
                                       ? PHImageRequestOptionsDeliveryModeHighQualityFormat
                                       : PHImageRequestOptionsDeliveryModeFastFormat;
            options.synchronous = YES;
            __block NSImage* image = nil;
            __block BOOL isInCloud = NO;
            [PHImageManager.defaultManager requestImageForAsset:asset
                                                     targetSize:CGSizeMake(side, side)
                                                    contentMode:isThumbnail ? PHImageContentModeAspectFill
                                                                        : PHImageContentModeAspectFit
                                                        options:options
                                                  resultHandler:^(NSImage* result, NSDictionary* info) {
                                                    image = result;
                                                    isInCloud = [info[PHImageResultIsInCloudKey] boolValue];
                                                  }];
            if (image == nil)
                return {Descriptor(), isInCloud == YES};
            NSData* const png = pngOf(image);
            return {png == nil ? Descriptor() : namelessFile(png), false};
        } @catch (NSException*) {
            return {};
        }
    }
}

// Deletion

bool isDeclined(NSError* error) {
    return ([error.domain isEqualToString:PHPhotosErrorDomain] && error.code == PHPhotosErrorUserCancelled)
           || ([error.domain isEqualToString:NSCocoaErrorDomain] && error.code == NSUserCancelledError);
}

PhotoDeletion deleteAssets(const std::vector<std::string>& localIdentifiers) {
    @autoreleasepool {
        @try {
            NSMutableArray<NSString*>* const identifiers = [NSMutableArray array];
            for (const std::string& one : localIdentifiers)
                if (NSString* const identifier = stringOf(one))
                    [identifiers addObject:identifier];
            PHFetchResult<PHAsset*>* const assets = assetsWith(identifiers);
            NSError* error = nil;
            const BOOL isDone = [PHPhotoLibrary.sharedPhotoLibrary
                performChangesAndWait:^{
                  [PHAssetChangeRequest deleteAssets:assets];
                }
                                error:&error];
            if (isDone)
                return PhotoDeletion::done;
            return isDeclined(error) ? PhotoDeletion::declined : PhotoDeletion::failed;
        } @catch (NSException*) {
            return PhotoDeletion::failed;
        }
    }
}

} // namespace

const SystemPhotoLibrary* systemPhotoLibrary() {
    static const SystemPhotoLibrary library{status, request, visitAssets, picture, deleteAssets};
    return &library;
}

} // namespace platform
