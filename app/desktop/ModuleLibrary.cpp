#include "ModuleLibrary.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <dlfcn.h>

std::string ModuleLibrary::PathFor(const std::string& moduleFolder)
{
    const QString program = QCoreApplication::applicationDirPath();
    const QString name = QString::fromLatin1(editor_module::kLibraryName);
    for (const QString& folder :
         {program, program + u'/' + QFile::decodeName(moduleFolder.c_str())}) {
        const QFileInfo module(folder + u'/' + name);
        if (module.exists())
            return QFile::encodeName(module.absoluteFilePath()).toStdString();
    }
    return editor_module::kLibraryName;
}

bool ModuleLibrary::Load(const std::string& path, std::string& error)
{
    void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (library == nullptr) {
        error = std::string("the editor module could not be loaded (") + dlerror() +
                "); build it with \"make\", or install vornosc again so that " +
                editor_module::kLibraryName + " is in its lib/vornosc/modules folder";
        return false;
    }
    const auto entry = [library](const char* name) { return dlsym(library, name); };
    const auto initialize =
        reinterpret_cast<editor_module::InitializeEntry>(entry("VornOSCEditor_Initialize"));
    openEditor = reinterpret_cast<editor_module::OpenEditorEntry>(entry("VornOSCEditor"));
    externalPaste =
        reinterpret_cast<editor_module::ExternalPasteEntry>(entry("ExternalPasteToClipboard"));
    menu = static_cast<QMenu**>(entry("hMenu"));
    if (initialize == nullptr || openEditor == nullptr || externalPaste == nullptr ||
        menu == nullptr) {
        error = path + " is not the editor module: its entries are missing";
        return false;
    }
    initialize();
    return true;
}
