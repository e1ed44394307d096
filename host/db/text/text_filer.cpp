#include "embedded/text_filer.h"

#include "AcString.h"
#include "acutads.h"
#include "db/text/ascii_groups.h"
#include "db/text/binary_groups.h"

#include <algorithm>
#include <cstdarg>

namespace embedded {

using namespace text;

TextFiler::TextFiler(TextForm form, std::string& bytes, AcDbDatabase* database)
    : m_database(database), m_ahead(std::make_unique<Groups>()), m_given(std::make_unique<Groups>()) {
    if (form == TextForm::kBinary)
        m_writer = std::make_unique<BinaryGroupWriter>(bytes);
    else
        m_writer = std::make_unique<AsciiGroupWriter>(bytes);
}

TextFiler::TextFiler(std::string_view bytes, AcDbDatabase* database)
    : m_database(database), m_ahead(std::make_unique<Groups>()), m_given(std::make_unique<Groups>()) {
    if (bytes.substr(0, kBinarySentinel.size()) == kBinarySentinel)
        m_reader = std::make_unique<BinaryGroupReader>(bytes);
    else
        m_reader = std::make_unique<AsciiGroupReader>(bytes);
}

TextFiler::~TextFiler() = default;

int TextFiler::rewindFiler() {
    if (!m_reader)
        return RTERROR;
    m_reader->rewind();
    m_ahead->clear();
    m_given->clear();
    m_missedEnd = false;
    resetFilerStatus();
    return RTNORM;
}

void TextFiler::resetFilerStatus() {
    m_status = Acad::eOk;
    m_message.clear();
}

Acad::ErrorStatus TextFiler::setError(Acad::ErrorStatus es, const ACHAR* format, ...) {
    if (m_status != Acad::eOk || es == Acad::eOk)
        return m_status;
    AcString text;
    va_list arguments;
    va_start(arguments, format);
    text.formatV(format, arguments);
    va_end(arguments);
    m_message = text.kACharPtr();
    return m_status = es;
}

Acad::ErrorStatus TextFiler::setError(const ACHAR* format, ...) {
    if (m_status != Acad::eOk)
        return m_status;
    AcString text;
    va_list arguments;
    va_start(arguments, format);
    text.formatV(format, arguments);
    va_end(arguments);
    m_message = text.kACharPtr();
    return m_status = Acad::eInvalidInput;
}

void TextFiler::setPrecision(int digits) {
    const int least = kDfltPrec, most = kMaxPrec;
    m_precision = std::clamp(digits, least, most);
}

} // namespace embedded
