#include "SyncDocument.h"

#include "document/LayoutChange.h"
#include "document/OSCProject.h"
#include "formats/touchosc/TouchOSCExport.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>

SyncDocument SyncDocumentOf(const LayoutSnapshot& layout, const QString& name)
{
    OSCProject project;
    layout.CopyInto(project);
    char* bytes = nullptr;
    std::size_t size = 0;
    std::FILE* out = open_memstream(&bytes, &size);
    if (out == nullptr)
        throw std::bad_alloc();
    WriteTouchOSCXml(out, project);
    std::fclose(out);
    const std::unique_ptr<char, decltype(&std::free)> written(bytes, &std::free);
    return {name, QByteArray(bytes, static_cast<qsizetype>(size))};
}
