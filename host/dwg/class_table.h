#pragma once

#include "dwg/byte_span.h"

#include <string>
#include <vector>

namespace embedded::dwg {

// A row of a drawing's class table. Texts are bytes as filed; text compare goes through `text`, which leaves
// out the zero that ends them in some products' files.
struct ClassRow {
    std::uint16_t number = 0;
    std::uint16_t proxyFlags = 0;
    std::string application;
    std::string className;
    std::string dxfName;
    // The objects of the class stand in the file as proxies.
    bool wasZombie = false;
    std::uint16_t itemClass = 0;

    static constexpr std::uint16_t kEntities = 0x1F2;
    static constexpr std::uint16_t kObjects = 0x1F3;
    bool makesEntities() const { return itemClass == kEntities; }

    static std::string text(const std::string& filed);
};

// Objects whose type number is 500 or above are of the class that has the number.
class ClassTable {
public:
    // From the section's data. FileError if a row cannot be read, or if a number comes twice or is below 500.
    static ClassTable read(ByteSpan data);
    // What read() took, with the rows that have been added behind.
    Bytes write() const;

    const std::vector<ClassRow>& rows() const { return m_rows; }
    // Null if no row has that number.
    const ClassRow* find(std::uint16_t number) const;
    // By C++ class name, since classes may share a DXF name. Null if there is none.
    const ClassRow* find(const std::string& className) const;
    // Adds a row with the next free number, which it answers. The texts get the terminating zero that this
    // table's other rows have. 0 if no number is left.
    std::uint16_t add(ClassRow row);

    static constexpr std::uint16_t kFirstNumber = 500;

private:
    std::vector<ClassRow> m_rows;
    // The section as it was read, while no row has been added: what products leave in the bits behind the
    // last row is not always zero.
    Bytes m_filed;
    bool m_terminated = true;
};

} // namespace embedded::dwg
