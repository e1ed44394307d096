#include "cli/common/drawing.h"

#include "cli/common/failure.h"

#include "dbapserv.h"
#include "dbmain.h"
#include "embedded/session.h"
#include "platform/text.h"

#include <utility>

namespace taldork::cli {

namespace {

/// The host's line begins with the file, which a Failure names by itself.
Failure hostFailure(const std::string& path, const std::string& line) {
    const std::string prefix = path + ": ";
    return Failure(path, line.rfind(prefix, 0) == 0 ? line.substr(prefix.size()) : line);
}

} // namespace

Drawing Drawing::open(const std::string& path) {
    std::string error;
    AcDbDatabase* database = embedded::openDocument(platform::fromUtf8(path), error);
    if (database == nullptr)
        throw hostFailure(path, error);
    return Drawing(database, path);
}

Drawing Drawing::read(const std::string& path) {
    auto database = std::make_unique<AcDbDatabase>(false);
    if (database->readDwgFile(platform::fromUtf8(path).c_str()) != Acad::eOk)
        throw hostFailure(path, !embedded::lastFileError().empty() ? embedded::lastFileError()
                                                                   : "the drawing cannot be read");
    acdbHostApplicationServices()->setWorkingDatabase(database.get());
    return Drawing(database.release(), path, false);
}

Drawing Drawing::create(const std::string& path) { return Drawing(embedded::newDocument(), path); }

Drawing::Drawing(AcDbDatabase* database, std::string path, bool isDocument)
    : m_database(database), m_path(std::move(path)), m_isDocument(isDocument) {}

Drawing::Drawing(Drawing&& other) noexcept
    : m_database(std::exchange(other.m_database, nullptr)), m_path(std::move(other.m_path)),
      m_isDocument(other.m_isDocument) {}

Drawing& Drawing::operator=(Drawing&& other) noexcept {
    std::swap(m_database, other.m_database);
    std::swap(m_path, other.m_path);
    std::swap(m_isDocument, other.m_isDocument);
    return *this;
}

Drawing::~Drawing() {
    if (m_isDocument) {
        embedded::closeDocument(m_database);
    } else if (m_database != nullptr) {
        delete m_database;
        acdbHostApplicationServices()->setWorkingDatabase(nullptr);
    }
}

void Drawing::save() { saveAs(m_path); }

void Drawing::saveAs(const std::string& path) {
    std::string error;
    if (!embedded::saveDocument(*m_database, platform::fromUtf8(path), error))
        throw hostFailure(path, error);
}

} // namespace taldork::cli
