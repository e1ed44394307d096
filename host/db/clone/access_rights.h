#pragma once

#include "db/open_close.h"
#include "db/stub.h"

namespace embedded {

// Reads an object for as long as the right lasts, also where somebody else has it open in a way that refuses
// a further reader: what is cloned is read as it stands.
class ReadRight {
public:
    explicit ReadRight(AcDbStub* stub) : m_stub(stub) {
        m_status = openStub(stub, AcDb::kForRead, false, m_object);
        m_opened = m_status == Acad::eOk;
        if (m_status == Acad::eWasOpenForWrite || m_status == Acad::eWasOpenForNotify ||
            m_status == Acad::eAtMaxReaders) {
            m_object = stub->object;
            m_status = m_object != nullptr ? Acad::eOk : m_status;
        }
    }
    ~ReadRight() {
        if (m_opened && m_stub->object != nullptr)
            closeStub(*m_stub);
    }
    ReadRight(const ReadRight&) = delete;
    ReadRight& operator=(const ReadRight&) = delete;

    Acad::ErrorStatus status() const { return m_status; }
    AcDbObject* object() const { return m_object; }

private:
    AcDbStub* m_stub;
    AcDbObject* m_object = nullptr;
    Acad::ErrorStatus m_status;
    bool m_opened = false;
};

// Writes an object for as long as the right lasts, whoever has it open.
class WriteRight {
public:
    explicit WriteRight(AcDbStub& stub)
        : m_stub(stub), m_before(stub.bits & (kOpenForWrite | kWrittenSinceOpen)) {
        m_stub.set(kOpenForWrite);
    }
    ~WriteRight() {
        if ((m_before & kOpenForWrite) != 0)
            return;
        m_stub.clear(kOpenForWrite | kWrittenSinceOpen);
        m_stub.set(m_before);
    }
    WriteRight(const WriteRight&) = delete;
    WriteRight& operator=(const WriteRight&) = delete;

private:
    AcDbStub& m_stub;
    std::uint32_t m_before;
};

} // namespace embedded
