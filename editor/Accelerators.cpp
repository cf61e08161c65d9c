#include "Accelerators.h"

#include "CommandIds.h"

#include <QKeyEvent>

namespace {

constexpr std::int32_t kUpKey = 0x7E1E;
constexpr std::int32_t kDownKey = 0x7D1F;
constexpr std::int32_t kLeftKey = 0x7B1C;
constexpr std::int32_t kRightKey = 0x7C1D;
constexpr int kControlFlag = 2;

std::int32_t KeyOf(int qtKey)
{
    switch (qtKey) {
        case Qt::Key_Up:
            return kUpKey;
        case Qt::Key_Down:
            return kDownKey;
        case Qt::Key_Left:
            return kLeftKey;
        case Qt::Key_Right:
            return kRightKey;
        default:
            return 0;
    }
}

}  // namespace

const AcceleratorRecord AcceleratorsOSC[9] = {
    {ID_UP, kUpKey, {1, 0, 0}},
    {ID_DOWN, kDownKey, {1, 0, 0}},
    {ID_LEFT, kLeftKey, {1, 0, 0}},
    {ID_RIGHT, kRightKey, {1, 0, 0}},
    {ID_CTLUP, kUpKey, {0, 0, 1}},
    {ID_CTLDOWN, kDownKey, {0, 0, 1}},
    {ID_CTLLEFT, kLeftKey, {0, 0, 1}},
    {ID_CTLRIGHT, kRightKey, {0, 0, 1}},
    {-1, -1, {0, 0, 0}},
};

int TranslateAccelerator(const AcceleratorRecord* table, const QKeyEvent& event)
{
    const std::int32_t key = KeyOf(event.key());
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    if (key == 0 || event.modifiers().testAnyFlags(Qt::ShiftModifier | Qt::AltModifier))
        return 0;
    for (const AcceleratorRecord* record = table; record->command != -1 || record->key != -1;
         ++record) {
        if (record->key == key && (record->flags[kControlFlag] != 0) == control)
            return record->command;
    }
    return 0;
}

int TranslateGridMove(const QKeyEvent& event)
{
    if (event.modifiers() != Qt::ShiftModifier && event.modifiers() != (Qt::ShiftModifier | Qt::KeypadModifier))
        return 0;
    switch (event.key()) {
        case Qt::Key_Left:
            return ID_GRID_LEFT;
        case Qt::Key_Right:
            return ID_GRID_RIGHT;
        case Qt::Key_Up:
            return ID_GRID_UP;
        case Qt::Key_Down:
            return ID_GRID_DOWN;
        default:
            return 0;
    }
}
