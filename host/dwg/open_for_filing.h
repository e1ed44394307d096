#pragma once

#include "db/stub.h"

namespace embedded::dwg {

// Lets a live object be read by a save, whoever has it open.
class OpenForFiling {
public:
    explicit OpenForFiling(AcDbStub& stub) : m_stub(stub), m_opened(!stub.isOpen()) {
        if (m_opened)
            ++m_stub.bits;
    }
    ~OpenForFiling() {
        if (m_opened)
            --m_stub.bits;
    }
    OpenForFiling(const OpenForFiling&) = delete;
    OpenForFiling& operator=(const OpenForFiling&) = delete;

private:
    AcDbStub& m_stub;
    bool m_opened;
};

} // namespace embedded::dwg
