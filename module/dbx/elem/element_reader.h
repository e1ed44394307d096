#pragma once

#include "dbx/elem/element_base.h"

class AcDbDwgFiler;
class AcDbObjectId;
class AcString;

namespace orv {
class Blob;
namespace serialization {
class BinaryInArchive;
}
} // namespace orv

namespace orv::elem {

// Reads the stream of one element, of every version, from a filer. See docs/element-stream.md.
class ElementReader {
public:
    ElementReader(ElementBase& element, AcDbDwgFiler& filer) : m_element(element), m_filer(filer) {}

    // Throws the status of the first call that fails, and 301 where the host is to keep the element as a
    // proxy. What an archive or a plugin throws passes through.
    void read();

private:
    struct Record;

    void readVersion();
    void readPlugins();
    void readPlugin();
    void readSoftIds(serialization::BinaryInArchive& archive);
    void readHardIds(serialization::BinaryInArchive& archive);
    boost::shared_ptr<ElementBase::IPlugin> createPlugin(const Record& record) const;
    void readLivingPlugin(const boost::shared_ptr<ElementBase::IPlugin>& plugin, Record& record);
    void keepUnknownPlugin(Record& record);
    void readLink();
    void readOwnData();
    void readLog();
    void readMagic();
    boost::shared_ptr<Blob> readBlock(unsigned int size);

    ElementBase& m_element;
    AcDbDwgFiler& m_filer;
    unsigned int m_version = 0;
};

} // namespace orv::elem
