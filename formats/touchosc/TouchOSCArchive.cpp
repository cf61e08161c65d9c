#include "TouchOSCArchive.h"

#include <zip.h>

#include <string>

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

namespace {

std::string TooLarge(const ImportLimits& limits)
{
    return "index.xml is larger than " + SizeText(limits.maxXmlBytes);
}

bool Inflate(zip_t* archive, zip_uint64_t index, std::string& xml, const ImportLimits& limits,
             std::string& error)
{
    zip_stat_t stat;
    zip_stat_init(&stat);
    if (zip_stat_index(archive, index, 0, &stat) == 0 && (stat.valid & ZIP_STAT_SIZE) != 0 &&
        stat.size > limits.maxXmlBytes) {
        error = TooLarge(limits);
        return false;
    }
    zip_file_t* file = zip_fopen_index(archive, index, 0);
    if (!file) {
        error = std::string("cannot inflate index.xml: ") + zip_strerror(archive);
        return false;
    }
    char buffer[65536];
    bool ok = true;
    for (;;) {
        const zip_int64_t count = zip_fread(file, buffer, sizeof buffer);
        if (count < 0) {
            error = std::string("index.xml is damaged: ") + zip_file_strerror(file);
            ok = false;
            break;
        }
        if (count == 0)
            break;
        if (xml.size() + static_cast<std::size_t>(count) > limits.maxXmlBytes) {
            error = TooLarge(limits);
            ok = false;
            break;
        }
        xml.append(buffer, static_cast<std::size_t>(count));
    }
    zip_fclose(file);
    return ok;
}

}  // namespace

bool ReadTouchOSCArchive(std::string_view bytes, std::string& xml, const ImportLimits& limits,
                         std::string& error)
{
    zip_error_t zipError;
    zip_error_init(&zipError);
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &zipError);
    zip_t* archive = source ? zip_open_from_source(source, ZIP_RDONLY, &zipError) : nullptr;
    zip_error_fini(&zipError);
    if (!archive) {
        if (source)
            zip_source_free(source);
        error = "not a TouchOSC file: it is not a zip archive";
        return false;
    }
    const zip_int64_t index = zip_name_locate(archive, kEntryName, ZIP_FL_NOCASE);
    bool ok = false;
    if (index < 0)
        error = "not a TouchOSC file: the archive holds no index.xml";
    else
        ok = Inflate(archive, static_cast<zip_uint64_t>(index), xml, limits, error);
    zip_discard(archive);  // closes the source too
    return ok;
}
