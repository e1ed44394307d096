#pragma once

#include "AcString.h"

#include <string>

namespace embedded {

// A drawing's file may spell a text in more ways than one: products escape letters in some texts that the
// code page has. A class whose texts do so keeps the spelling beside the text.
class TextFormFiler {
public:
    virtual ~TextFormFiler() = default;

    // As AcDbDwgFiler::readString. `form` gets the spelling, byte by byte, where writing the text would give
    // another one; else it is empty.
    virtual void readSpelledText(AcString& text, std::string& form) = 0;
    // As writeString, in that spelling if it stands for the text.
    virtual void writeSpelledText(const AcString& text, const std::string& form) = 0;
};

} // namespace embedded
