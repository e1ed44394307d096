#pragma once

#include "AdAChar.h"

#include <map>
#include <string>

namespace embedded {

struct FontFace {
    std::string family = "DejaVu Sans"; // UTF-8
    bool bold = false;
    bool italic = false;
};

// The fonts that are installed, by the names that drawings have for them. Looks at the system's fonts once.
class InstalledFonts {
public:
    // By the bare name of a font's file ("arial.ttf", in whatever folder the text style says) or by that of a
    // family. DejaVu Sans for what is not installed and for shape fonts.
    FontFace face(const std::wstring& name);

private:
    void list();

    bool m_isListed = false;
    // Both by names in small letters.
    std::map<std::string, FontFace> m_byFile;
    std::map<std::string, FontFace> m_byFamily;
};

} // namespace embedded
