#include "tools/sample_disk/picture_file.h"

#include <cstdio> // jpeglib.h needs it
#include <cstdlib>
#include <new>

#include <jpeglib.h>
#include <png.h>

namespace sample_disk {

namespace {

std::string png(int width, int height, png_uint_32 format, const std::uint8_t* pixels) {
    png_image image{};
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(width);
    image.height = static_cast<png_uint_32>(height);
    image.format = format;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(image);
    std::string file(size, '\0');
    if (png_image_write_to_memory(&image, file.data(), &size, 0, pixels, 0, nullptr) == 0)
        throw std::bad_alloc();
    file.resize(size);
    return file;
}

} // namespace

std::string jpegFile(const Canvas& picture) {
    jpeg_error_mgr errors; // ends the program; only a lack of memory can be an error here
    jpeg_compress_struct compressor;
    compressor.err = jpeg_std_error(&errors);
    jpeg_create_compress(&compressor);
    unsigned char* bytes = nullptr;
    unsigned long size = 0;
    jpeg_mem_dest(&compressor, &bytes, &size);
    compressor.image_width = static_cast<JDIMENSION>(picture.width());
    compressor.image_height = static_cast<JDIMENSION>(picture.height());
    compressor.input_components = 3;
    compressor.in_color_space = JCS_RGB;
    jpeg_set_defaults(&compressor);
    jpeg_start_compress(&compressor, TRUE);
    for (int y = 0; y < picture.height(); ++y) {
        auto* row = const_cast<JSAMPROW>(picture.row(y)); // only read
        jpeg_write_scanlines(&compressor, &row, 1);
    }
    jpeg_finish_compress(&compressor);
    jpeg_destroy_compress(&compressor);
    std::string file(reinterpret_cast<const char*>(bytes), size);
    std::free(bytes);
    return file;
}

std::string pngFile(const Canvas& picture) {
    return png(picture.width(), picture.height(), PNG_FORMAT_RGB, picture.row(0));
}

std::string pngFile(int side, std::span<const std::uint8_t> pixels) {
    return png(side, side, PNG_FORMAT_RGBA, pixels.data());
}

} // namespace sample_disk
