#include "dbx/elem/element_log_filing.h"

#include "arx/types.h"
#include "base/assert.h"
#include "base/dbx/inc/orvrxuti_dbx.h"
#include "base/product_name.h"
#include "dbx/elem/element_log.h"
#include "dbx/elem/property_serializers.h"
#include "orvcore/warn_on_new_version.h"

#include "dbfiler.h"

namespace orv {

namespace {

constexpr Adesk::Int32 kVersion = 1;
constexpr Adesk::Int32 kMagic = 0x6be6a717;

void writeEntry(AcDbDwgFiler& filer, const ElementLog::Entry& entry) {
    ORV_ASSERT_STATUS(filer.writeUInt32(static_cast<Adesk::UInt32>(entry.level)));
    ORV_ASSERT_STATUS(filer.writeUInt32(static_cast<Adesk::UInt32>(entry.msgId)));
    ORV_ASSERT_STATUS(filer.writeUInt32(entry.extra));
    ORV_ASSERT_STATUS(filer.writeUInt32(static_cast<Adesk::UInt32>(entry.arguments.size())));
    for (const boost::any& argument : entry.arguments) {
        const Acad::ErrorStatus es = PropertySerializers::instance().dwgOutAny(filer, argument);
        ORV_ASSERT(es == Acad::eOk).warning("no filer available!");
    }
}

ElementLog::Entry readEntry(AcDbDwgFiler& filer) {
    Adesk::UInt32 level = 0;
    Adesk::UInt32 msgId = 0;
    Adesk::UInt32 count = 0;
    ElementLog::Entry entry{};
    ORV_ASSERT_STATUS(filer.readUInt32(&level));
    ORV_ASSERT_STATUS(filer.readUInt32(&msgId));
    ORV_ASSERT_STATUS(filer.readUInt32(&entry.extra));
    ORV_ASSERT_STATUS(filer.readUInt32(&count));
    entry.level = static_cast<LogLevel>(level);
    entry.msgId = msgId;
    for (Adesk::UInt32 i = 0; i < count; ++i) {
        boost::any argument;
        ORV_ASSERT_STATUS(PropertySerializers::instance().dwgInAny(filer, argument));
        // A value that the stream does not hold comes as a zero.
        ORV_ASSERT_STATUS(filer.filerStatus());
        entry.arguments.push_back(argument);
    }
    return entry;
}

} // namespace

Acad::ErrorStatus dwgOutLog(AcDbDwgFiler& filer, const ElementLog& log) {
    try {
        ORV_ASSERT_STATUS(filer.writeInt32(kVersion));
        ORV_ASSERT_STATUS(filer.writeUInt32(static_cast<Adesk::UInt32>(log.size())));
        for (const ElementLog::Entry& entry : log)
            writeEntry(filer, entry);
        ORV_ASSERT_STATUS(filer.writeInt32(kMagic));
        return Acad::eOk;
    } catch (Acad::ErrorStatus failed) {
        return failed;
    }
}

Acad::ErrorStatus dwgInLog(AcDbDwgFiler& filer, ElementLog& log) {
    try {
        log.clear();
        Adesk::Int32 version = 0;
        ORV_ASSERT_STATUS(filer.readInt32(&version));
        if (version > kVersion)
            return status::kMakeProxy;
        orv_warnOnNewVersion(version, kVersion, productName());
        Adesk::UInt32 count = 0;
        ORV_ASSERT_STATUS(filer.readUInt32(&count));
        for (Adesk::UInt32 i = 0; i < count; ++i)
            log.append(readEntry(filer));
        Adesk::Int32 magic = 0;
        ORV_ASSERT_STATUS(filer.readInt32(&magic));
        ORV_ASSERT(magic == kMagic)(magic)(kMagic).debug("Filing error. Possible reason: data corruption.");
        return magic == kMagic ? Acad::eOk : status::kMakeProxy;
    } catch (Acad::ErrorStatus failed) {
        return failed;
    }
}

} // namespace orv
