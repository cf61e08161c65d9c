#pragma once

#include "host/EditorModule.h"

#include <string>

class QMenu;

// The editor module, loaded at run time as any host loads it: by file name,
// its entries resolved by their plain names.
class ModuleLibrary {
public:
    // Loads the module at path and starts it; false with a sentence in error
    // when it cannot. Loaded once; the module stays for the process's life.
    bool Load(const std::string& path, std::string& error);
    // Where the module is: beside the program in the build folder, or in
    // moduleFolder (relative to the program's folder) once installed. Found
    // here rather than along the run path, which a sanitizer's dlopen does not
    // read; when neither holds it, the plain name lets the loader say why.
    static std::string PathFor(const std::string& moduleFolder);

    editor_module::OpenEditorEntry openEditor = nullptr;
    editor_module::ExternalPasteEntry externalPaste = nullptr;
    QMenu** menu = nullptr;  // the module's menu, once its first editor has a frame
};
