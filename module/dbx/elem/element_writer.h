#pragma once

#include "dbx/elem/element_base.h"

#include "acadstrc.h"

class AcDbDwgFiler;
class AcString;

namespace orv::elem {

// Writes the stream of one element to a filer. See docs/element-stream.md.
class ElementWriter {
public:
    ElementWriter(const ElementBase& element, AcDbDwgFiler& filer) : m_element(element), m_filer(filer) {}

    // Throws the status of the first call that fails. What a plugin throws passes through.
    void write();

private:
    struct Record;

    void writePlugins();
    void writePlugin(const ElementBase::IPlugin& plugin);
    void writeUnknownPlugin(const std::string& id, const ElementBase::ProxyPlugin& plugin);
    void writeRecord(const Record& record);
    template <class WriteId>
    void writeIds(const std::deque<AcDbObjectId>& ids, WriteId writeId);
    void writeBlock(const unsigned char* data, std::uint64_t size);
    void writeOwnData();
    void writeLog();

    const ElementBase& m_element;
    AcDbDwgFiler& m_filer;
};

} // namespace orv::elem
