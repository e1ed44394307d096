#include "dwg/class_table.h"

#include "dwg/bit_reader.h"
#include "dwg/bit_writer.h"
#include "dwg/file_error.h"

#include <algorithm>

namespace embedded::dwg {
namespace {

// What a row takes at least: a section with fewer bits left holds only filling.
const std::size_t kLeastRowBits = 8;
// Numbers are filed as BS, and the object types above are the format's own.
const std::uint16_t kLastNumber = 0x7FFF;

ClassRow readRow(BitReader& in) {
    ClassRow row;
    row.number = in.bitShort();
    row.proxyFlags = in.bitShort();
    row.application = in.filedText();
    row.className = in.filedText();
    row.dxfName = in.filedText();
    row.wasZombie = in.bit();
    row.itemClass = in.bitShort();
    return row;
}

void writeRow(const ClassRow& row, BitWriter& out) {
    out.bitShort(row.number);
    out.bitShort(row.proxyFlags);
    out.filedText(row.application);
    out.filedText(row.className);
    out.filedText(row.dxfName);
    out.bit(row.wasZombie);
    out.bitShort(row.itemClass);
}

bool endsInZero(const std::string& text) { return !text.empty() && text.back() == '\0'; }

} // namespace

std::string ClassRow::text(const std::string& filed) {
    return endsInZero(filed) ? filed.substr(0, filed.size() - 1) : filed;
}

ClassTable ClassTable::read(ByteSpan data) {
    BitReader in(data);
    ClassTable table;
    while (in.left() >= kLeastRowBits) {
        ClassRow row = readRow(in);
        if (!in.ok())
            throwDamaged("class row " + std::to_string(table.m_rows.size()) + " cannot be read");
        if (row.number < kFirstNumber || table.find(row.number) != nullptr)
            throwDamaged("class number " + std::to_string(row.number) + " cannot stand in row " +
                         std::to_string(table.m_rows.size()));
        table.m_rows.push_back(std::move(row));
    }
    table.m_filed = data.copy();
    if (!table.m_rows.empty())
        table.m_terminated = endsInZero(table.m_rows.back().className);
    return table;
}

Bytes ClassTable::write() const {
    if (!m_filed.empty())
        return m_filed;
    BitWriter out;
    for (const ClassRow& row : m_rows)
        writeRow(row, out);
    return out.takeBytes();
}

const ClassRow* ClassTable::find(std::uint16_t number) const {
    // Numbers nearly always count up from the first without a gap.
    const std::size_t guess = static_cast<std::size_t>(number) - kFirstNumber;
    if (number >= kFirstNumber && guess < m_rows.size() && m_rows[guess].number == number)
        return &m_rows[guess];
    for (const ClassRow& row : m_rows) {
        if (row.number == number)
            return &row;
    }
    return nullptr;
}

const ClassRow* ClassTable::find(const std::string& className) const {
    for (const ClassRow& row : m_rows) {
        if (ClassRow::text(row.className) == className)
            return &row;
    }
    return nullptr;
}

std::uint16_t ClassTable::add(ClassRow row) {
    row.number = kFirstNumber;
    for (const ClassRow& other : m_rows)
        row.number = std::max<std::uint16_t>(row.number, static_cast<std::uint16_t>(other.number + 1));
    if (row.number > kLastNumber)
        return 0;
    for (std::string* text : {&row.application, &row.className, &row.dxfName}) {
        *text = ClassRow::text(*text);
        if (m_terminated)
            text->push_back('\0');
    }
    m_rows.push_back(std::move(row));
    m_filed.clear();
    return m_rows.back().number;
}

} // namespace embedded::dwg
