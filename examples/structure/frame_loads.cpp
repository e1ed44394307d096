#include "structure/frame_loads.h"

#include "orvcore/transaction_manager.h"
#include "structure/beam.h"
#include "structure/free_load.h"
#include "structure/slab.h"

#include <algorithm>
#include <iterator>

namespace structure {

namespace {

// Load cases.
constexpr unsigned int kWeight = 1;
constexpr unsigned int kImposed = 2;
constexpr unsigned int kWind = 3;
constexpr unsigned int kSnow = 4;
constexpr unsigned int kTemperature = 5;

// What is on a layer, in nine characters; the name of the store follows.
const wchar_t* layerOfCase(unsigned int loadCase) {
    static const wchar_t* const layers[] = {L"XSTRLC01_", L"XSTRLC02_", L"XSTRLC03_", L"XSTRLC04_",
                                            L"XSTRLC05_"};
    return layers[std::min<std::size_t>(loadCase - 1, std::size(layers) - 1)];
}

const wchar_t* const kForce = L"kN";
const wchar_t* const kForcePerLength = L"kN/m";
const wchar_t* const kForcePerArea = L"kN/m\u00b2";
const wchar_t* const kMoment = L"kNm";
const wchar_t* const kMomentPerLength = L"kNm/m";
const wchar_t* const kStrain = L"\u2030"; // as the temperature makes it

// Directions and kinds of loads, by the analysis' numbers.
constexpr int kGravity = orv::elem::kLoadTypeGravity;
constexpr int kLocalZ = 13;
constexpr int kProjectedZ = 19;
constexpr int kMomentAboutX = 24;
constexpr int kMomentAboutY = 25;
constexpr int kThermalZ = 53;

struct BeamRecipe {
    double from, to; // in shares of the beam
    LoadProperties load;
};

LoadProperties properties(int type, LoadShape shape, std::vector<double> values, const wchar_t* unit,
                          unsigned int loadCase) {
    LoadProperties made;
    made.type = type;
    made.shape = shape;
    made.values = std::move(values);
    made.unit = unit;
    made.cases = {loadCase};
    return made;
}

LoadProperties weight(LoadShape shape, std::vector<double> values) {
    return properties(kGravity, shape, std::move(values), kForcePerLength, kWeight);
}

LoadProperties imposed(int type, std::vector<double> values, const wchar_t* unit) {
    return properties(type, LoadShape::kLinear, std::move(values), unit, kImposed);
}

// For the straight beams in their order, none where there are no values; a small frame has fewer, and those
// behind in a large one have none.
std::vector<BeamRecipe> beamRecipes() {
    return {
        {0.0, 1.0, weight(LoadShape::kLinear, {4.0, 8.0})},
        {0.0, 1.0, weight(LoadShape::kLinearMid, {2.0, 8.0, 2.0})},
        {0.0, 1.0, weight(LoadShape::kQuadraticStart, {8.0, 0.0})},
        {0.0, 1.0, weight(LoadShape::kQuadraticEnd, {0.0, 8.0})},
        {0.0, 1.0, weight(LoadShape::kCubicStart, {8.0, 0.0})},
        {0.0, 1.0, weight(LoadShape::kQuadraticMid, {0.0, 8.0, 0.0})},
        {0.0, 1.0, weight(LoadShape::kCubicEnd, {0.0, 8.0})},
        {0.0, 0.0, LoadProperties()}, // the curved beam stands in front of it
        {0.5, 0.5, imposed(kGravity, {20.0}, kForce)},
        {0.0, 1.0, properties(kThermalZ, LoadShape::kLinear, {0.06, 0.06}, kStrain, kTemperature)},
        {0.0, 1.0, properties(kLocalZ, LoadShape::kLinear, {-5.0, 5.0}, kForcePerLength, kWind)},
        {0.25, 0.75, imposed(kLocalZ, {-6.0, -6.0}, kForcePerLength)},
        {0.5, 0.5, imposed(kMomentAboutY, {12.0}, kMoment)},
        {0.0, 1.0, imposed(kMomentAboutX, {-4.0, -4.0}, kMomentPerLength)},
    };
}

} // namespace

FrameLoads::FrameLoads(ModelSpace& space, double metre, const FrameMembers& members)
    : m_space(space), m_metre(metre), m_members(members) {}

void FrameLoads::make() {
    loadBeams();
    loadCorner();
    loadSlabs();
}

Load& FrameLoads::add(std::unique_ptr<Load> load) {
    if (load == nullptr)
        throw std::runtime_error("a load has no place");
    const unsigned int loadCase = *load->plugin()->getLoadCases().begin();
    Load* const added = m_space.add(std::move(load), layerOfCase(loadCase));
    m_ids.push_back(added->objectId());
    added->general()->setName(L"L" + std::to_wstring(m_ids.size()));
    return *added;
}

void FrameLoads::addTo(Beam& beam, double from, double to, const LoadProperties& properties) {
    demand(add(Load::forBeam(from, to, properties)).attachTo(beam), "a load cannot be put on its beam");
}

void FrameLoads::addOver(const Slab& slab, std::unique_ptr<Load> load) {
    m_overSlabs.emplace_back(add(std::move(load)).objectId(), slab.objectId());
}

void FrameLoads::loadBeams() {
    const std::vector<BeamRecipe> recipes = beamRecipes();
    const std::size_t count = std::min(recipes.size(), m_members.straight.size());
    for (std::size_t i = 0; i < count; ++i)
        if (!recipes[i].load.values.empty())
            addTo(*m_members.straight[i], recipes[i].from, recipes[i].to, recipes[i].load);
    LoadProperties snow = properties(kProjectedZ, LoadShape::kLinear, {-4.0, -4.0}, kForcePerLength, kSnow);
    snow.name = L"Snow";
    addTo(*m_members.rafter, 0.0, 1.0, snow);
    addTo(*m_members.curved, 0.0, 1.0, imposed(kGravity, {3.0, 6.0}, kForcePerLength));
}

// It grows with the height, and blows from where the frame begins.
void FrameLoads::loadCorner() {
    const auto atStorey = [&](std::size_t storey) {
        return -3.0 - 3.0 * static_cast<double>(storey) / static_cast<double>(m_members.corner.size());
    };
    for (std::size_t storey = 0; storey < m_members.corner.size(); ++storey) {
        LoadProperties wind = properties(kLocalZ, LoadShape::kLinear,
                                         {atStorey(storey), atStorey(storey + 1)}, kForcePerLength, kWind);
        wind.name = L"Wind";
        addTo(*m_members.corner[storey], 0.0, 1.0, wind);
    }
}

AcGePoint3d FrameLoads::placeOver(const Slab& slab, double along, double across) {
    const std::vector<AcGePoint3d>& corners = slab.corners();
    return corners[0] + (corners[1] - corners[0]) * along + (corners[3] - corners[0]) * across;
}

// Away from the edges, where the beams have loads.
void FrameLoads::loadSlabs() {
    const auto slab = [&](std::size_t i) -> const Slab& {
        return *m_members.slabs[i % m_members.slabs.size()];
    };
    const auto patch = [&](const Slab& on) {
        return std::vector<AcGePoint3d>{placeOver(on, 0.25, 0.3), placeOver(on, 0.75, 0.3),
                                        placeOver(on, 0.75, 0.7), placeOver(on, 0.25, 0.7)};
    };
    addOver(slab(0), Load::overArea(patch(slab(0)), properties(kGravity, LoadShape::kUniform, {5.0},
                                                               kForcePerArea, kImposed)));
    addOver(slab(1),
            Load::overArea(patch(slab(1)), properties(kGravity, LoadShape::kPlanar, {2.0, 6.0, 6.0, 2.0},
                                                      kForcePerArea, kImposed)));
    const Slab& walled = slab(2);
    addOver(walled, Load::alongLine({placeOver(walled, 0.2, 0.25), placeOver(walled, 0.7, 0.25),
                                     placeOver(walled, 0.7, 0.75)},
                                    imposed(kGravity, {4.0, 8.0, 4.0}, kForcePerLength)));
    LoadProperties machine = imposed(kGravity, {15.0}, kForce);
    machine.kind = orv::elem::kLoadKindDashed;
    m_space.provideDashes(L"STRICHLINIE", 0.2 * m_metre);
    addOver(slab(3), Load::atPoint(placeOver(slab(3), 0.5, 0.5), machine));
}

void referToSlabs(const std::vector<std::pair<AcDbObjectId, AcDbObjectId>>& overSlabs) {
    for (const auto& pair : overSlabs) {
        ORV_CDBTransactionManager manager(pair.first.database(), false);
        AcDbObject *load = nullptr, *slab = nullptr;
        demand(manager.getObject(load, pair.first, AcDb::kForWrite, false, false), "a load cannot be opened");
        demand(manager.getObject(slab, pair.second, AcDb::kForRead, false, false), "a slab cannot be opened");
        auto* const free = dynamic_cast<FreeLoad*>(Load::cast(load)->plugin());
        if (free != nullptr)
            free->setAffectedNos({Element::cast(slab)->general()->getNumber()});
    }
}

} // namespace structure
