#pragma once

#include "dwg/bit_writer.h"
#include "dwg/header_fields.h"

#include <string>
#include <vector>

namespace embedded::dwg {

// The variables of a drawing's header, by the names in header_fields.cpp. A name that is not there, or one of
// another kind, is a mistake in this program: std::logic_error.
class HeaderVariables {
public:
    // Those of a new drawing; handles are null.
    HeaderVariables();

    // From the section's data. FileError if it ends too early or has a code that the format does not know.
    static HeaderVariables read(ByteSpan data);
    // What read() took, with the changes since: the same bytes if there were none. Bits behind the last known
    // variable go back as they came.
    Bytes write() const;

    // B, BS, CMC, BL; of a time the day.
    std::uint32_t number(const char* name) const { return at(name).number; }
    std::int16_t signedNumber(const char* name) const { return static_cast<std::int16_t>(at(name).number); }
    void setNumber(const char* name, std::uint32_t value) { at(name).number = value; }
    void setTime(const char* name, std::uint32_t day, std::uint32_t millisecond);
    double real(const char* name) const { return at(name).triple.x; }
    void setReal(const char* name, double value) { at(name).triple.x = value; }
    // 3BD and 2RD.
    const Triple& triple(const char* name) const { return at(name).triple; }
    void setTriple(const char* name, const Triple& value) { at(name).triple = value; }
    // The bytes of a TV, as filed in the drawing's code page.
    const std::string& text(const char* name) const { return at(name).text; }
    void setText(const char* name, const std::string& bytes) { at(name).text = bytes; }
    // Whether the texts are filed with the zero that ends them. True if there is none.
    bool textsAreTerminated() const;
    std::uint64_t handle(const char* name) const { return at(name).handle.value; }
    void setHandle(const char* name, std::uint64_t handle);

private:
    struct Value {
        std::uint32_t number = 0;
        std::uint32_t millisecond = 0;
        Triple triple;
        std::string text;
        HandleReference handle;
    };

    const Value& at(const char* name) const;
    Value& at(const char* name);
    static Value readValue(FieldKind kind, BitReader& in);
    static void writeValue(FieldKind kind, const Value& value, BitWriter& out);
    bool isFiled(std::size_t field) const;

    std::vector<Value> m_values;
    Bytes m_tail;
    std::size_t m_tailBits = 0;
};

} // namespace embedded::dwg
