#pragma once

#include "base/export.h"
#include "dbx/elem/element_base.h"
#include "dbx/elem/load_types.h"
#include "dbx/elem/load_vertex.h"

#include "dbid.h"

#include <boost/shared_ptr.hpp>

#include <deque>
#include <set>
#include <string>

class ORV_SegmentedCurve;

namespace orv::elem {

// The load as an element by itself: the data of drawings' old load entities. New loads are plugins, see
// GenericLoad.
//
// "Read" and "write" are the host object's checks. Values are not looked at: what is no finite number is
// stored. For the data see docs/load-base.md.
class TALDORK_API LoadBase : public ElementBase {
public:
    using Vertex = LoadVertex;
    static constexpr PositionSource PS_POINT = elem::PS_POINT;

    static constexpr unsigned int kVersion = 8; // of the element's own data
    static constexpr unsigned int kMagic = 0xfd7e6a4d;

    ~LoadBase() override;

protected:
    // Of a new load: of the load case 1 alone, of the type kLoadTypeGravity, without vertices.
    explicit LoadBase(AcDbObject& host);

    // True.
    bool onSave(serialization::IOutArchive& archive) const override;
    // Puts name, first load case, kind, type, uniformity and values under the keys that createSaveString
    // begins, free if one of the plugins is a FreeLoadBase, and then that plugin's. True.
    bool onSave(KeyValueStorage& storage) const override;
    // False for data of a newer version, of which nothing is taken, and for a wrong end; both are reported.
    // Texts for vertices that are not there are reported and dropped. What the archive throws passes through,
    // with what was read before it taken.
    bool onLoad(serialization::IInArchive& archive, unsigned int version) override;
    // True, with nothing read: the values are there for others to see.
    bool onLoad(const KeyValueStorage& storage) override;

public:
    // Read; write. The element that the load acts on, or null.
    const AcDbObjectId& getElement() const;
    void setElement(const AcDbObjectId& id);
    // Read; write. All vertices have the value of the first.
    bool isUDL() const;
    void setUDL(bool isUniform);
    // Read; write. See load_types.h.
    int getType() const;
    void setType(int type);
    LOAD_KIND getClass() const;
    void setClass(LOAD_KIND kind);
    LoadTypeCategory getCategory() const;
    void setCategory(LoadTypeCategory category);
    LoadDistribution getDistribution() const;
    void setDistribution(LoadDistribution distribution);
    // Read; write, both; the single one replaces all.
    const std::set<unsigned int>& getLoadCases() const;
    void setLoadCases(const std::set<unsigned int>& loadCases);
    void setLoadCase(unsigned int loadCase);
    // Read, all. Who changes vertices through the second one makes the write check before.
    const std::deque<Vertex>& getVertices() const;
    std::deque<Vertex>& getVertices();
    unsigned int numVertices() const;
    // Write. A uniform load's vertices get the value of the first one.
    void setVertices(const std::deque<Vertex>& vertices);
    // Write. Takes the vertex as it is.
    void appendVertex(const Vertex& vertex);
    // Write; read. An index that names no vertex is reported, changes nothing and is answered with a text
    // that is empty for ever.
    void setTextAt(int index, const std::wstring& text);
    const std::wstring& getTextAt(int index) const;
    // Of the first vertex, and of the last.
    void setTextAtStart(const std::wstring& text);
    const std::wstring& getTextAtStart() const;
    void setTextAtEnd(const std::wstring& text);
    const std::wstring& getTextAtEnd() const;
    // Read; write.
    const std::wstring& getUnitText() const;
    void setUnitText(const std::wstring& text);
    // Read; write. The outline of an area load is a polygon.
    bool isPolygonal() const;
    void setPolygonal(bool isPolygonal);

    // What the keys of a load's values begin with: "load/", what it acts along, and "free/" or
    // "element_based/", as in "load/line/free/". An unknown distribution is reported, and "unknown/".
    static void createSaveString(LoadDistribution distribution, bool isFree, std::string& out);

private:
    bool hasVertex(int index) const;
    int lastIndex() const;
    void readKind(serialization::IInArchive& archive, unsigned int version);
    void readVertices(serialization::IInArchive& archive, unsigned int version);
    void readEndTexts(serialization::IInArchive& archive);

    AcDbObjectId m_element;
    bool m_isUDL = false;
    int m_type = kLoadTypeGravity;
    LOAD_KIND m_class = kLoadKindDefault;
    LoadTypeCategory m_category = kLoadTypeCategoryNone;
    LoadDistribution m_distribution = kPointLoad;
    std::set<unsigned int> m_loadCases;
    std::deque<Vertex> m_vertices;
    std::wstring m_unitText;
    boost::shared_ptr<ORV_SegmentedCurve> m_curve; // nobody sets it any more
    bool m_isPolygonal = false;
};

} // namespace orv::elem
