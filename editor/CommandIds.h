#pragma once

// The editor's command ids, carried by the items of menu 1000 and by the
// accelerator table.
enum CommandId : int {
    ID_HELP_FINDER = 1011,
    ID_OSCEDITOR_PROPERTIES = 32778,
    ID_OSCEDITOR_TOFRONT = 32779,
    ID_OSCEDITOR_TOBACK = 32780,
    ID_OSCEDITOR_ADDPAGE = 32781,
    ID_OSCEDITOR_REMOVEPAGE = 32782,
    ID_LEFT = 32783,
    ID_RIGHT = 32784,
    ID_UP = 32785,
    ID_DOWN = 32786,
    ID_CTLLEFT = 32787,
    ID_CTLRIGHT = 32788,
    ID_CTLUP = 32789,
    ID_CTLDOWN = 32790,
    ID_OSCEDITOR_EXPORTASTOUCHOSCFILE = 32791,
    ID_OSCEDITOR_EXPORTASLEMURFILE = 32792,
    ID_OSCEDITOR_PAGEPROPERTIES = 32793,
    ID_OSCTESTMODE = 32794,
    ID_OSCEDITOR_SEARCHANDREPLACE = 32795,
    ID_OSCEDITOR_SELECTALL = 32796,
    ID_SETCOLOR_RED = 32798,  // to ID_SETCOLOR_PINK, one per named colour
    ID_SETCOLOR_GREEN = 32799,
    ID_SETCOLOR_BLUE = 32800,
    ID_SETCOLOR_YELLOW = 32801,
    ID_SETCOLOR_PURPLE = 32802,
    ID_SETCOLOR_GRAY = 32803,
    ID_SETCOLOR_ORANGE = 32804,
    ID_SETCOLOR_BROWN = 32805,
    ID_SETCOLOR_PINK = 32806,
    ID_EDIT_CLEAR = 57632,
    ID_EDIT_COPY = 57634,
    ID_EDIT_CUT = 57635,
    ID_EDIT_PASTE = 57637,
    ID_FILE_SAVE = 57603,
    ID_FILE_SAVE_AS = 57604,
    ID_EDIT_UNDO = 57643,  // ours: takes back the last change
    ID_EDIT_REDO = 57644,  // ours: does again the change last taken back
    // Ours, from here on: the layout tools.
    ID_EDIT_DUPLICATE = 33100,       // a copy of the selection beside it
    ID_EDIT_DUPLICATEARRAY = 33101,  // numbered copies in a row or column
    ID_OSCEDITOR_SELECTIONPROPERTIES = 33102,  // the fields of several controls at once
    ID_ALIGN_LEFT = 33103,           // to ID_ALIGN_MIDDLE: the selection's edges or centres
    ID_ALIGN_RIGHT = 33104,
    ID_ALIGN_TOP = 33105,
    ID_ALIGN_BOTTOM = 33106,
    ID_ALIGN_CENTRE = 33107,
    ID_ALIGN_MIDDLE = 33108,
    ID_DISTRIBUTE_ACROSS = 33109,  // equal gaps between neighbours
    ID_DISTRIBUTE_DOWN = 33110,
    ID_SAME_WIDTH = 33111,
    ID_SAME_HEIGHT = 33112,
    ID_VIEW_GRID = 33113,  // dots every grid step, checked when shown
    ID_VIEW_SNAP = 33114,  // mouse edits land on the grid, checked when on
    ID_VIEW_ZOOMIN = 33115,  // the canvas's zoom, one step at a time
    ID_VIEW_ZOOMOUT = 33116,
    ID_VIEW_ACTUALSIZE = 33117,  // back to 100%
    ID_VIEW_FITPAGE = 33118,     // the whole page in the window
    ID_GRID_LEFT = 33119,  // Shift with an arrow: the selection moves a grid step
    ID_GRID_RIGHT = 33120,
    ID_GRID_UP = 33121,
    ID_GRID_DOWN = 33122,
    // Ours: the controls a host put on the clipboard pasted and selected, one
    // step named after the host's Insert menu or its parameter list.
    ID_EDIT_INSERT = 33123,
    ID_EDIT_INSERTPARAMETERS = 33124,
};
