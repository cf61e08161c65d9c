#pragma once

// A window of the host or of the editor, opaque to the layout document.
// The toolkit layer knows what it points to.
using WindowHandle = void*;
