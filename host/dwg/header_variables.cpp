#include "dwg/header_variables.h"

#include "dwg/file_error.h"

#include <cstring>
#include <stdexcept>
#include <unordered_map>

namespace embedded::dwg {
namespace {

std::size_t fieldNamed(const char* name) {
    static const auto* const kIndex = [] {
        auto* index = new std::unordered_map<std::string, std::size_t>;
        for (std::size_t i = 0; i < kHeaderFieldCount; ++i)
            index->emplace(kHeaderFields[i].name, i);
        return index;
    }();
    const auto found = kIndex->find(name);
    if (found == kIndex->end())
        throw std::logic_error(std::string("no header variable ") + name);
    return found->second;
}

// The value of CEPSNTYPE with which the plot style's handle is filed.
const std::uint32_t kPlotStyleByHandle = 3;

} // namespace

HeaderVariables::HeaderVariables() : m_values(kHeaderFieldCount) {
    for (std::size_t i = 0; i < kHeaderFieldCount; ++i) {
        const HeaderField& field = kHeaderFields[i];
        Value& value = m_values[i];
        if (field.kind == FieldKind::kText)
            value.text = field.text;
        else if (field.kind == FieldKind::kHandle)
            value.handle = HandleReference(field.code, static_cast<std::uint64_t>(field.number));
        else if (field.kind >= FieldKind::kDouble)
            value.triple = {field.number, field.number, field.number};
        else
            value.number = static_cast<std::uint32_t>(field.number);
    }
    for (std::size_t i = 0; i < kTripleDefaultCount; ++i)
        setTriple(kTripleDefaults[i].name, kTripleDefaults[i].value);
}

const HeaderVariables::Value& HeaderVariables::at(const char* name) const {
    return m_values[fieldNamed(name)];
}

HeaderVariables::Value& HeaderVariables::at(const char* name) { return m_values[fieldNamed(name)]; }

bool HeaderVariables::isFiled(std::size_t field) const {
    static const std::size_t kConditional = fieldNamed("CPSNID");
    static const std::size_t kCondition = fieldNamed("CEPSNTYPE");
    return field != kConditional || m_values[kCondition].number == kPlotStyleByHandle;
}

HeaderVariables::Value HeaderVariables::readValue(FieldKind kind, BitReader& in) {
    Value value;
    switch (kind) {
    case FieldKind::kBit:
        value.number = in.bit();
        break;
    case FieldKind::kShort:
    case FieldKind::kColour:
        value.number = in.bitShort();
        break;
    case FieldKind::kLong:
        value.number = in.bitLong();
        break;
    case FieldKind::kTime:
        value.number = in.bitLong();
        value.millisecond = in.bitLong();
        break;
    case FieldKind::kDouble:
        value.triple.x = in.bitDouble();
        break;
    case FieldKind::kTriple:
        value.triple = in.threeBitDoubles();
        break;
    case FieldKind::kRawPair:
        value.triple.x = in.rawDouble();
        value.triple.y = in.rawDouble();
        break;
    case FieldKind::kText:
        value.text = in.filedText();
        break;
    case FieldKind::kHandle:
        value.handle = in.handle();
        break;
    }
    return value;
}

void HeaderVariables::writeValue(FieldKind kind, const Value& value, BitWriter& out) {
    switch (kind) {
    case FieldKind::kBit:
        return out.bit(value.number != 0);
    case FieldKind::kShort:
    case FieldKind::kColour:
        return out.bitShort(static_cast<std::uint16_t>(value.number));
    case FieldKind::kLong:
        return out.bitLong(value.number);
    case FieldKind::kTime:
        out.bitLong(value.number);
        return out.bitLong(value.millisecond);
    case FieldKind::kDouble:
        return out.bitDouble(value.triple.x);
    case FieldKind::kTriple:
        return out.threeBitDoubles(value.triple);
    case FieldKind::kRawPair:
        out.rawDouble(value.triple.x);
        return out.rawDouble(value.triple.y);
    case FieldKind::kText:
        return out.filedText(value.text);
    case FieldKind::kHandle:
        return out.handle(value.handle);
    }
}

HeaderVariables HeaderVariables::read(ByteSpan data) {
    BitReader in(data);
    HeaderVariables variables;
    for (std::size_t i = 0; i < kHeaderFieldCount; ++i) {
        if (!variables.isFiled(i))
            continue;
        variables.m_values[i] = readValue(kHeaderFields[i].kind, in);
        if (!in.ok())
            throwDamaged(std::string("header variable ") + kHeaderFields[i].name + " cannot be read");
    }
    // Less than a byte is the filling up to the section's end.
    if (in.left() >= 8) {
        BitWriter tail;
        tail.copyBits(data, in.position(), in.end());
        variables.m_tailBits = tail.position();
        variables.m_tail = tail.takeBytes();
    }
    return variables;
}

Bytes HeaderVariables::write() const {
    BitWriter out;
    for (std::size_t i = 0; i < kHeaderFieldCount; ++i) {
        if (isFiled(i))
            writeValue(kHeaderFields[i].kind, m_values[i], out);
    }
    out.copyBits(m_tail, 0, m_tailBits);
    return out.takeBytes();
}

bool HeaderVariables::textsAreTerminated() const {
    for (const Value& value : m_values) {
        if (!value.text.empty())
            return value.text.back() == '\0';
    }
    return true;
}

void HeaderVariables::setTime(const char* name, std::uint32_t day, std::uint32_t millisecond) {
    Value& value = at(name);
    value.number = day;
    value.millisecond = millisecond;
}

void HeaderVariables::setHandle(const char* name, std::uint64_t handle) {
    const std::size_t field = fieldNamed(name);
    if (m_values[field].handle.value != handle)
        m_values[field].handle = HandleReference(kHeaderFields[field].code, handle);
}

} // namespace embedded::dwg
