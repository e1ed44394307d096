#include "gi/installed_fonts.h"

#include "platform/files.h"
#include "platform/text.h"

#include <fontconfig/fontconfig.h>

#include <algorithm>

namespace embedded {
namespace {

// Names of fonts differ in ASCII letters' case at most.
std::string inSmallLetters(std::string name) {
    std::transform(name.begin(), name.end(), name.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return name;
}

const char* textOf(FcPattern* font, const char* property) {
    FcChar8* text = nullptr;
    return FcPatternGetString(font, property, 0, &text) == FcResultMatch ? reinterpret_cast<const char*>(text)
                                                                         : "";
}

int numberOf(FcPattern* font, const char* property, int usual) {
    int number = usual;
    return FcPatternGetInteger(font, property, 0, &number) == FcResultMatch ? number : usual;
}

} // namespace

void InstalledFonts::list() {
    m_isListed = true;
    FcPattern* any = FcPatternCreate();
    FcObjectSet* properties = FcObjectSetBuild(FC_FILE, FC_FAMILY, FC_WEIGHT, FC_SLANT, nullptr);
    if (FcFontSet* fonts = FcFontList(nullptr, any, properties)) {
        for (int i = 0; i < fonts->nfont; ++i) {
            FcPattern* font = fonts->fonts[i];
            FontFace face;
            face.family = textOf(font, FC_FAMILY);
            if (face.family.empty())
                continue;
            m_byFamily[inSmallLetters(face.family)].family = face.family;
            face.bold = numberOf(font, FC_WEIGHT, FC_WEIGHT_REGULAR) >= FC_WEIGHT_DEMIBOLD;
            face.italic = numberOf(font, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
            const std::wstring file = platform::bareNameOf(platform::fromUtf8(textOf(font, FC_FILE)));
            m_byFile[inSmallLetters(platform::toUtf8(file))] = face;
        }
        FcFontSetDestroy(fonts);
    }
    FcObjectSetDestroy(properties);
    FcPatternDestroy(any);
}

FontFace InstalledFonts::face(const std::wstring& name) {
    const std::string bare = inSmallLetters(platform::toUtf8(platform::bareNameOf(name)));
    const bool isShapeFont = bare.size() >= 4 && bare.compare(bare.size() - 4, 4, ".shx") == 0;
    if (bare.empty() || isShapeFont)
        return FontFace();
    if (!m_isListed)
        list();
    const auto byFile = m_byFile.find(bare);
    if (byFile != m_byFile.end())
        return byFile->second;
    const auto byFamily = m_byFamily.find(bare);
    return byFamily != m_byFamily.end() ? byFamily->second : FontFace();
}

} // namespace embedded
