#include "TouchOSCArchive.h"

#include <zip.h>

namespace {

constexpr char kEntryName[] = "index.xml";
constexpr zip_uint32_t kBestCompression = 9;

}  // namespace

bool WriteTouchOSCArchive(const char* path, const void* xml, std::size_t size)
{
    int error = 0;
    zip_t* archive = zip_open(path, ZIP_CREATE | ZIP_TRUNCATE, &error);
    if (!archive)
        return false;
    zip_source_t* source = zip_source_buffer(archive, xml, size, 0);
    if (!source) {
        zip_discard(archive);
        return false;
    }
    const zip_int64_t entry = zip_file_add(archive, kEntryName, source, ZIP_FL_OVERWRITE);
    if (entry < 0) {
        zip_source_free(source);
        zip_discard(archive);
        return false;
    }
    if (zip_set_file_compression(archive, static_cast<zip_uint64_t>(entry), ZIP_CM_DEFLATE,
                                 kBestCompression) != 0 ||
        zip_close(archive) != 0) {
        zip_discard(archive);
        return false;
    }
    return true;
}
