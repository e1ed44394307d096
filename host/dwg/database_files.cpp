// The operations of a database that meet the file system.

#include "db/database_core.h"
#include "db/file_failure.h"
#include "dbmain.h"
#include "dwg/drawing_reader.h"
#include "dwg/drawing_writer.h"
#include "dwg/file_error.h"
#include "embedded/event_source.h"
#include "platform/files.h"
#include "platform/text.h"

#include <new>

using namespace embedded;

namespace {

Acad::ErrorStatus fail(Acad::ErrorStatus es, const std::wstring& fileName, const std::string& reason) {
    noteFileFailure(platform::toUtf8(fileName) + ": " + reason);
    return es;
}

Acad::ErrorStatus failFromSystem(const platform::FileResult& result) {
    noteFileFailure(platform::toUtf8(result.message));
    return Acad::eFilerError;
}

Acad::ErrorStatus statusOf(const dwg::FileError& failure) {
    switch (failure.kind()) {
    case dwg::FileError::kForeign:
        return Acad::eFilerError;
    case dwg::FileError::kDamaged:
        return Acad::eDwgNeedsRecovery;
    case dwg::FileError::kOlderVersion:
        return Acad::eOldDwgVersion;
    case dwg::FileError::kNewerVersion:
        return Acad::eInvalidDwgVersion;
    }
    return Acad::eFilerError;
}

dwg::FileFrame& frameOf(DatabaseCore& core) {
    if (core.frame == nullptr)
        core.frame = std::make_unique<dwg::FileFrame>();
    return static_cast<dwg::FileFrame&>(*core.frame);
}

} // namespace

Acad::ErrorStatus AcDbDatabase::readDwgFile(const ACHAR* fileName, int, bool, const ACHAR*) {
    if (fileName == nullptr)
        return Acad::eInvalidInput;
    if (m_core->stubs().size() != 0)
        return fail(Acad::eWasOpenForWrite, fileName, "the database has a drawing already");
    std::vector<unsigned char> bytes;
    if (const platform::FileResult result = platform::readFile(fileName, bytes); !result)
        return failFromSystem(result);
    m_core->fileName = fileName;
    m_core->originalFileName = fileName;
    try {
        dwg::readDrawing(*m_core, std::make_shared<const dwg::Bytes>(std::move(bytes)));
    } catch (const dwg::FileError& failure) {
        m_core->fileName.clear();
        m_core->originalFileName.clear();
        return fail(statusOf(failure), fileName, failure.what());
    } catch (const std::bad_alloc&) {
        m_core->fileName.clear();
        m_core->originalFileName.clear();
        return fail(Acad::eOutOfMemory, fileName, "not enough memory for this drawing");
    }
    events::dwgFileOpened(this, fileName);
    events::initialDwgFileOpenComplete(this);
    return Acad::eOk;
}

Acad::ErrorStatus AcDbDatabase::saveAs(const ACHAR* fileName, bool, AcDb::AcDbDwgVersion version) {
    if (fileName == nullptr || *fileName == L'\0')
        return Acad::eInvalidInput;
    if (version != AcDb::kDHL_CURRENT && version != AcDb::kDHL_1015)
        return fail(Acad::eInvalidDwgVersion, fileName, "only drawings of version AC1015 (2000) are written");
    events::beginSave(this, fileName);
    dwg::Bytes bytes;
    std::string error;
    Acad::ErrorStatus es = Acad::eOutOfMemory;
    try {
        es = dwg::writeDrawing(*m_core, frameOf(*m_core), bytes, error);
    } catch (const std::bad_alloc&) {
        error = "not enough memory to write this drawing";
    }
    if (es != Acad::eOk) {
        events::abortSave(this);
        return fail(es, fileName, error);
    }
    if (const platform::FileResult result = platform::replaceFile(fileName, bytes.data(), bytes.size());
        !result) {
        events::abortSave(this);
        return failFromSystem(result);
    }
    // The caller's text may be the name that is replaced here.
    const std::wstring saved = fileName;
    m_core->fileName = saved;
    m_core->modified = false;
    events::saveComplete(this, saved.c_str());
    return Acad::eOk;
}
