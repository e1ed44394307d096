#pragma once

#include "base/export.h"
#include "dbx/elem/load_types.h"

#include "dbmain.h"

#include <boost/optional.hpp>

#include <set>
#include <string>

namespace orv {
class KeyValueTreeReaderWriter;
}

namespace orv::elem {

// Two positions on a reference element. What the modes and the length mean is the front end's matter.
struct EditTwoVerticesData {
    int m_mode1 = 0; // how p1 is meant
    double m_p1 = 0.0;
    int m_mode2 = 0; // how p2 is meant
    double m_p2 = 0.0;
    AcDbObjectId m_element;
    double m_length = 0.0;
};

// Positions closer than kLoadValueTolerance are the same; lengths as isEqualLoadValue has it (both in
// vertex_list_util.h).
TALDORK_API bool operator==(const EditTwoVerticesData& left, const EditTwoVerticesData& right);
inline bool operator!=(const EditTwoVerticesData& left, const EditTwoVerticesData& right) {
    return !(left == right);
}

// What describes one load, as dialogs and commands hand it around and keep it in the user's settings. It
// knows nothing of drawings, but for the reference element.
struct TALDORK_API LoadData {
    LoadData();
    LoadData(const LoadData& other);
    LoadData& operator=(const LoadData& other);
    ~LoadData();

    // Writes the record into the cursor's node. State, and of the geometry all but the two positions, are
    // left out. What the node holds besides stays there.
    static void save(KeyValueTreeReaderWriter& rw, const LoadData& data);
    // Reads it back, into a record that may hold something already. A value that is missing, or that cannot
    // be converted and is told on orvBeep, leaves kind, type and value 1 as they are, and makes the name
    // empty. Load cases are added to those that the record has; of as many as the node counts a missing one
    // is 0. What may be absent stays as it is unless its flag says that it is there, and is then the node's
    // value, or, where that is missing: distribution 0, distribution curve 1, values 2 and 3 0.0, positions
    // 0.0 and 1.0. Geometry that is read has modes 0, no element and length 0.
    static void load(KeyValueTreeReaderWriter& rw, LoadData& data);

    int m_state = 1; // the front end's; neither saved nor compared
    std::wstring m_name;
    std::set<unsigned int> m_loadCases;
    LOAD_KIND m_kind = kLoadKindDefault;
    int m_type = kLoadTypeGravity;
    boost::optional<LoadDistribution> m_distribution;
    boost::optional<LineLoadDistributionCurve> m_distributionCurve;
    double m_value1 = 0.0;
    boost::optional<double> m_value2;
    boost::optional<double> m_value3;
    boost::optional<EditTwoVerticesData> m_geometry;
};

// Without the state. A missing value 2 or 3 is like one that is next to 0.
TALDORK_API bool operator==(const LoadData& left, const LoadData& right);
inline bool operator!=(const LoadData& left, const LoadData& right) { return !(left == right); }

} // namespace orv::elem
