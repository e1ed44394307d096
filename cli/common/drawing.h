#pragma once

#include <memory>
#include <string>

class AcDbDatabase;

namespace taldork::cli {

/// A drawing opened as a document of the host for the time of one call, and its working one from then on.
/// Ending it closes the document without saving. Paths are UTF-8. Every operation throws Failure with the
/// reason as one line.
class Drawing {
public:
    /// Opens a file.
    static Drawing open(const std::string& path);
    /// Reads a file into a database that is no document: no application is told, so that nothing has been
    /// taken up from it. It is the working one as long as this object.
    static Drawing read(const std::string& path);
    /// A new drawing without a file; its name for messages and for `save` is `path`.
    static Drawing create(const std::string& path);

    Drawing(Drawing&& other) noexcept;
    Drawing& operator=(Drawing&& other) noexcept;
    ~Drawing();

    AcDbDatabase& database() const { return *m_database; }
    const std::string& path() const { return m_path; }

    /// Writes the drawing to its own path, or to another one. Afterwards there is the old file or the new
    /// one, whole.
    void save();
    void saveAs(const std::string& path);

private:
    Drawing(AcDbDatabase* database, std::string path, bool isDocument = true);

    AcDbDatabase* m_database;
    std::string m_path;
    bool m_isDocument;
};

} // namespace taldork::cli
