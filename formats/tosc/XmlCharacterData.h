#pragma once

#include <string>
#include <string_view>

// Appends text as an element's content, the way the app writes its texts: in a
// CDATA section. A text that one cannot hold as it stands, one with "]]>" or a
// carriage return (which parsers read as a line feed), is written escaped
// instead, so that it reads back byte for byte. What XML cannot carry at all,
// control characters other than tab, line feed and carriage return, and bytes
// that are not UTF-8, becomes U+FFFD, as the canvas shows them: the file stays
// well formed whatever a layout holds.
void AppendCharacterData(std::string& xml, std::string_view text);
