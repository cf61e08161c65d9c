#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Message numbers shared by the module and its host. They travel as custom
// event types, so their values must never change.
constexpr unsigned WM_OSC_HOSTREQUEST = 0x8000;  // also the status text towards the host
constexpr unsigned WM_OSC_SETTITLE = 0x8063;
constexpr unsigned WM_OSC_SETEDITOR = 0x8064;
constexpr unsigned WM_OSC_CANCLOSE = 32977;
constexpr unsigned WM_OSC_TESTVALUE = 0x8127;
constexpr unsigned WM_OSC_PROPERTIES = 0x83E7;
constexpr unsigned WM_OSC_CONTEXTMENU = 0x83E8;
constexpr unsigned WM_OSC_CLOSEFRAME = 204;
// Ours: a control operated in test mode, sent to the host's window with an
// OperatedControl record as long parameter, so that the host can send the
// control's whole address. It comes beside WM_OSC_TESTVALUE, which stays as it is.
constexpr unsigned WM_OSC_OPERATED = 0x8128;

// Toolkit messages a host frame sends its editor: a menu command (the command
// id as word parameter), and a menu about to open (the QMenu* as word
// parameter), whose items then take the editor's enable and check rules.
// Their classic numbers, 202 and 236, are Qt's own gesture and other events,
// so they sit the same distance past the first event number Qt leaves free.
constexpr unsigned kFirstFreeEventNumber = 1000;
constexpr unsigned WM_COMMAND = kFirstFreeEventNumber + 202;
constexpr unsigned WM_INITMENUPOPUP = kFirstFreeEventNumber + 236;

// Codes in the first word of a host request record.
enum HostRequestCode : std::intptr_t {
    kRequestSetTitle = 2,
    kRequestHelpTopic = 34,
    kRequestSplitPath = 44,
    kRequestSave = 70,
    kRequestOpenEditor = 80,  // 'P'
    // For a host that keeps recovery copies: whether the layout has unsaved
    // changes (answers 1 or 0), and a copy of the layout written to the path
    // in word 8 without touching the layout's own file, name or changed state
    // (answers 1 when written).
    kRequestWriteCopy = 67,   // 'C'
    kRequestIsModified = 77,  // 'M'
    // Ours, for a host that remembers each layout's target device, which the
    // layout file does not keep: the device (answers 0 or 1), and a device
    // set from word 1 without marking the layout changed.
    kRequestDevice = 68,      // 'D'
    kRequestSetDevice = 100,  // 'd'
    // Ours, for a host that listens for OSC: the test-mode value of every
    // control whose address is the text in word 8 is set from the
    // ReceivedValue in word 9, on every page; the layout itself does not
    // change. Answers how many controls were set.
    kRequestSetValues = 86,  // 'V'
    // Ours, for a host that brings in layouts of other apps through a copy:
    // the layout becomes one never saved, changed, and shown under the name
    // in word 8 until it is saved.
    kRequestBecomeNew = 78,  // 'N'
    // Ours, for a host that reopens a layout from its recovery copy: the
    // layout becomes the one of the file at the path in word 8, changed, as
    // that file does not hold what it shows. Answers 1, or 0 for a path
    // the editor cannot keep.
    kRequestBecomeChangedAt = 65,  // 'A'
    // Ours, for a host that shows the layout on other screens: when word 9
    // points to a ControlValue, that control's test-mode value is set first
    // (the layout itself does not change); then, when word 8 points to a
    // LayoutSnapshot, it is filled with the layout as it stands, values
    // included. Answers 1 when a value was set.
    kRequestLayoutState = 83,  // 'S'
    // Ours, for a host that lets users choose the grid: the grid step of
    // every canvas set from word 1 when it is from 2 to 100 units (0 leaves
    // it); answers the step in force.
    kRequestGridStep = 71,  // 'G'
    // Ours, for a host that shows the zoom: answers the canvas's zoom in percent.
    kRequestZoom = 90,  // 'Z'
};

// Words of the editor-open request: the menu and the accelerator table.
constexpr int kRequestMenuWord = 8;
constexpr int kRequestAcceleratorsWord = 9;
// Word of the set-device request: the device, 0 or 1.
constexpr int kRequestDeviceWord = 1;
// Word of the grid request: the step.
constexpr int kRequestGridStepWord = 1;
// Words of the set-values request: the address and the value.
constexpr int kRequestAddressWord = 8;
constexpr int kRequestValueWord = 9;
// Words of the layout-state request: the snapshot to fill and the value to set.
constexpr int kRequestSnapshotWord = 8;
constexpr int kRequestControlValueWord = 9;
// Word of the copy request: the path to write to.
constexpr int kRequestCopyPathWord = 8;
// Word of the become-new request: the name to show.
constexpr int kRequestNewNameWord = 8;
// Word of the become-changed-at request: the layout's own path.
constexpr int kRequestOwnPathWord = 8;
// Words of the path request: the folder and name buffers, 256 bytes each.
constexpr int kRequestFolderWord = 8;
constexpr int kRequestNameWord = 9;

constexpr std::intptr_t kHelpTopic = 17016;

// Eleven words; the first is a request code. Words that carry pointers are
// pointer-sized, so every word is.
struct HostRequest {
    std::intptr_t words[11] = {};
};

// The status text record sent with WM_OSC_HOSTREQUEST and word parameter 0:
// word 0 holds 0x20 and word 8 points to a NUL-terminated text that lives only
// for the duration of the send.
struct StatusRecord {
    std::intptr_t words[11] = {};
};
constexpr std::intptr_t kStatusRecordKind = 0x20;
constexpr int kStatusTextWord = 8;

// WM_OSC_TESTVALUE carries the control's value as its word parameter and, as
// its long parameter, a heap-allocated AddressComponents that the receiver owns
// and deletes.
using AddressComponents = std::vector<std::string>;

// What WM_OSC_OPERATED tells of the operated control; it lives only for the
// duration of the send.
struct OperatedControl {
    // A press, a move with the button held, a release on the control, and a
    // release away from it, which does not reach the control's own value rule.
    enum Phase : int { kPressed = 0, kDragged = 1, kReleased = 2, kReleasedAway = 3 };
    const char* name;     // NUL-terminated
    const char* command;  // the whole address, NUL-terminated
    int type;             // a ControlType
    std::int32_t minValue;
    std::int32_t maxValue;
    std::int32_t value;  // after the control's value rule ran for this phase
    Phase phase;
};

// A test-mode value for one control: its page and its index there.
struct ControlValue {
    int page;
    int control;
    std::int32_t value;
};

// A value received for an address: a number, taken into each control's range,
// or on and off, its maximum and minimum.
struct ReceivedValue {
    enum Kind : int { kNumber = 0, kOn = 1, kOff = 2 };
    Kind kind;
    double number;  // for kNumber
};
