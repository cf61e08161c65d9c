#pragma once

#include <QPixmap>

class QMenu;

// The module's interface resources live in nibs: folders "<name>.nib" of Qt
// resources compiled into the module, holding menus ("menu-<id>.json") and
// icons ("icon-<id>.png"). A nib's handle is also the module's instance handle.
using ResourceHandle = void*;

// The nib named name, or null when the module holds none by that name.
ResourceHandle OpenNib(const char* name);
void CloseNib(ResourceHandle nib);

// The nib that LoadMenu reads; hosts and modules share one current handle in
// toolkits where resources are looked up per process.
ResourceHandle CurrentResources();
void SetCurrentResources(ResourceHandle nib);

// Makes a nib's resources current for a scope and puts back the previous ones.
// In this build only LoadMenu reads the current handle, and the module is the
// only one that sets it, so the guard merely keeps the habit for functions
// that load menus.
class HoldInstance {
public:
    explicit HoldInstance(ResourceHandle nib = nullptr);
    ~HoldInstance();
    HoldInstance(const HoldInstance&) = delete;
    HoldInstance& operator=(const HoldInstance&) = delete;

private:
    ResourceHandle saved_;
};

// A new menu built from menu resource id of the current nib, owned by the
// caller; null when the nib or the menu is missing. Each item carries its
// command id as its data.
QMenu* LoadMenu(int id);

// Icon resource id of the given nib; a null pixmap when missing.
QPixmap LoadIcon(ResourceHandle nib, int id);

// The nib loaded once for the module's life, as MacInstanceInitialize does it.
class MacInstance {
public:
    ~MacInstance();
    // Loads the nib the first time and attaches the module; later calls return
    // the same handle. A missing nib is reported on standard output and the
    // module attaches all the same.
    ResourceHandle Initialize(const char* name);

private:
    ResourceHandle nibReference = nullptr;
    int initialized = 0;
};
