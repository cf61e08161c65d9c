#pragma once

#include "host/WindowHandle.h"

class QObject;

// Window handles are the QObjects of the windows they name.
inline WindowHandle HandleOf(QObject* window)
{
    return static_cast<void*>(window);
}
inline QObject* ObjectOf(WindowHandle window)
{
    return static_cast<QObject*>(window);
}
