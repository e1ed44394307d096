#include "entity_fixture.h"

#include <rapidcheck.h>

#include <functional>

namespace {

double number(double low, double high) {
    const int steps = *rc::gen::inRange(0, 1000001);
    return low + (high - low) * steps / 1000000.0;
}

AcGePoint3d point() { return {number(-50.0, 50.0), number(-50.0, 50.0), number(-50.0, 50.0)}; }

AcGeVector3d direction() {
    const AcGeVector3d vector(number(-1.0, 1.0), number(-1.0, 1.0), number(-1.0, 1.0));
    return vector.length() < 0.1 ? AcGeVector3d::kYAxis : vector.normal();
}

// A movement, turn, uniform scale and perhaps a mirror: what every entity can follow.
AcGeMatrix3d similarity() {
    AcGeMatrix3d matrix = AcGeMatrix3d::rotation(number(-3.0, 3.0), direction(), point()) *
                          AcGeMatrix3d::scaling(number(0.2, 5.0), point());
    if (*rc::gen::arbitrary<bool>())
        matrix = AcGeMatrix3d::mirroring(AcGePlane(point(), direction())) * matrix;
    return AcGeMatrix3d::translation(point().asVector()) * matrix;
}

std::unique_ptr<AcDbCurve> curve() {
    switch (*rc::gen::inRange(0, 4)) {
    case 0:
        return std::make_unique<AcDbLine>(point(), point() + direction());
    case 1:
        return std::make_unique<AcDbCircle>(point(), direction(), number(0.5, 20.0));
    case 2:
        return std::make_unique<AcDbArc>(point(), direction(), number(0.5, 20.0), number(0.0, 6.0),
                                         number(0.0, 6.0) + 0.1);
    default: {
        auto made = std::make_unique<AcDbPolyline>();
        const unsigned count = *rc::gen::inRange(2u, 6u);
        for (unsigned i = 0; i < count; ++i)
            made->addVertexAt(i, {3.0 * i + number(0.0, 2.0), number(-9.0, 9.0)}, number(-2.0, 2.0));
        made->setClosed(*rc::gen::arbitrary<bool>());
        made->setElevation(number(-9.0, 9.0));
        made->setNormal(direction());
        return made;
    }
    }
}

AcGePoint3d at(const AcDbCurve& curve, double share) {
    double end = 0.0;
    AcGePoint3d found;
    RC_ASSERT(curve.getDistAtParam(
                  [&] {
                      curve.getEndParam(end);
                      return end;
                  }(),
                  end) == Acad::eOk);
    RC_ASSERT(curve.getPointAtDist(end * share, found) == Acad::eOk);
    return found;
}

bool isNear(const AcGePoint3d& a, const AcGePoint3d& b) { return a.distanceTo(b) < 1.0e-6; }

} // namespace

TEST(TransformProperty, APointOfACurveGoesWhereTheMatrixTakesIt) {
    embedded::startHost();
    rc::check([] {
        const auto before = curve();
        const AcGeMatrix3d matrix = similarity();
        AcDbEntity* copy = nullptr;
        RC_ASSERT(before->getTransformedCopy(matrix, copy) == Acad::eOk);
        const std::unique_ptr<AcDbEntity> owned(copy);
        const AcDbCurve& after = *AcDbCurve::cast(copy);
        const double share = number(0.0, 1.0);
        // A circle's parameter begins anew at its own first axis.
        if (before->isPeriodic()) {
            AcGePoint3d nearest;
            const AcGePoint3d expected = matrix * at(*before, share);
            RC_ASSERT(after.getClosestPointTo(expected, nearest) == Acad::eOk);
            RC_ASSERT(isNear(nearest, expected));
        } else {
            RC_ASSERT(isNear(at(after, share), matrix * at(*before, share)));
        }
    });
}

TEST(TransformProperty, ThereAndBackIsWhereItWas) {
    rc::check([] {
        const auto made = curve();
        const AcGeMatrix3d matrix = similarity();
        const AcDbExtents before = extentsOf(*made);
        RC_ASSERT(made->transformBy(matrix) == Acad::eOk);
        RC_ASSERT(made->transformBy(matrix.inverse()) == Acad::eOk);
        const AcDbExtents after = extentsOf(*made);
        RC_ASSERT(isNear(after.minPoint(), before.minPoint()));
        RC_ASSERT(isNear(after.maxPoint(), before.maxPoint()));
    });
}

TEST(TransformProperty, EveryPointOfACurveLiesInItsExtents) {
    rc::check([] {
        const auto made = curve();
        AcDbExtents box = extentsOf(*made);
        const AcDbExtents before = box;
        box.addPoint(at(*made, number(0.0, 1.0)));
        RC_ASSERT(isNear(box.minPoint(), before.minPoint()));
        RC_ASSERT(isNear(box.maxPoint(), before.maxPoint()));
    });
}

TEST(TransformProperty, ParameterDistanceAndPointTellTheSamePlace) {
    rc::check([] {
        const auto made = curve();
        double start = 0.0, end = 0.0, dist = 0.0, param = 0.0;
        AcGePoint3d byParam, byDist;
        RC_ASSERT(made->getStartParam(start) == Acad::eOk);
        RC_ASSERT(made->getEndParam(end) == Acad::eOk);
        const double told = start + (end - start) * number(0.0, 1.0);
        RC_ASSERT(made->getPointAtParam(told, byParam) == Acad::eOk);
        RC_ASSERT(made->getDistAtParam(told, dist) == Acad::eOk);
        RC_ASSERT(made->getPointAtDist(dist, byDist) == Acad::eOk);
        RC_ASSERT(isNear(byParam, byDist));
        RC_ASSERT(made->getParamAtDist(dist, param) == Acad::eOk);
        RC_ASSERT(std::fabs(param - told) < 1.0e-6);
        RC_ASSERT(made->getParamAtPoint(byParam, param) == Acad::eOk);
    });
}

TEST(TransformProperty, TheTangentFollowsTheCurve) {
    rc::check([] {
        const auto made = curve();
        double start = 0.0, end = 0.0;
        made->getStartParam(start);
        made->getEndParam(end);
        // Off the corners of a polyline.
        const double whole = std::floor(number(0.0, 0.999) * (end - start));
        const bool many = made->isKindOf(AcDbPolyline::desc());
        const double param = many ? whole + number(0.1, 0.9) : start + (end - start) * number(0.1, 0.9);
        const double step = 1.0e-6;
        AcGePoint3d before, after;
        AcGeVector3d tangent;
        RC_ASSERT(made->getPointAtParam(param - step, before) == Acad::eOk);
        RC_ASSERT(made->getPointAtParam(param + step, after) == Acad::eOk);
        RC_ASSERT(made->getFirstDeriv(param, tangent) == Acad::eOk);
        RC_ASSERT(((after - before) / (2.0 * step) - tangent).length() < 1.0e-4 * (1.0 + tangent.length()));
    });
}

TEST(TransformProperty, ATextAndAReferenceTakeAPointOfTheirsAlong) {
    rc::check([] {
        const AcGeMatrix3d matrix = similarity();
        AcDbText text(point(), L"Beam", AcDbObjectId(), number(0.5, 5.0), number(0.0, 6.0));
        text.setNormal(direction());
        const AcGePoint3d position = text.position();
        const double height = text.height();
        RC_ASSERT(text.transformBy(matrix) == Acad::eOk);
        RC_ASSERT(isNear(text.position(), matrix * position));
        RC_ASSERT(std::fabs(text.height() - height * matrix.scale()) < 1.0e-6);
        RC_ASSERT(std::fabs(text.widthFactor() - 1.0) < 1.0e-6);
        AcDbBlockReference reference(point(), AcDbObjectId());
        reference.setNormal(direction());
        reference.setRotation(number(0.0, 6.0));
        reference.setScaleFactors({number(0.5, 3.0), -number(0.5, 3.0), number(0.5, 3.0)});
        const AcGePoint3d inside = point();
        const AcGePoint3d seen = reference.blockTransform() * inside;
        RC_ASSERT(reference.transformBy(matrix) == Acad::eOk);
        RC_ASSERT(isNear(reference.blockTransform() * inside, matrix * seen));
    });
}

TEST(TransformProperty, UndoneAndRedoneEachChangeComesAndGoes) {
    rc::check([] {
        AcDbDatabase database(true);
        AcDbBlockTableRecord* space = nullptr;
        RC_ASSERT(acdbOpenObject(space, database.core().roots.modelSpace, AcDb::kForWrite) == Acad::eOk);
        AcDbObjectId id;
        AcDbCurve* made = curve().release();
        space->appendAcDbEntity(id, made);
        made->close();
        space->close();
        embedded::forgetHistory(database);
        std::vector<AcDbExtents> states;
        const auto look = [&] {
            AcDbCurve* entity = nullptr;
            RC_ASSERT(acdbOpenObject(entity, id, AcDb::kForRead) == Acad::eOk);
            const AcDbExtents box = extentsOf(*entity);
            entity->close();
            return box;
        };
        states.push_back(look());
        const int steps = *rc::gen::inRange(1, 6);
        for (int i = 0; i < steps; ++i) {
            embedded::beginCommand(database);
            AcDbCurve* entity = nullptr;
            RC_ASSERT(acdbOpenObject(entity, id, AcDb::kForWrite) == Acad::eOk);
            RC_ASSERT(entity->transformBy(similarity()) == Acad::eOk);
            entity->close();
            states.push_back(look());
        }
        for (int i = steps; i-- > 0;) {
            RC_ASSERT(embedded::undo(database));
            const AcDbExtents box = look();
            const AcDbExtents& then = states[static_cast<std::size_t>(i)];
            RC_ASSERT(box.minPoint().distanceTo(then.minPoint()) == 0.0);
        }
        for (int i = 1; i <= steps; ++i) {
            RC_ASSERT(embedded::redo(database));
            const AcDbExtents box = look();
            const AcDbExtents& then = states[static_cast<std::size_t>(i)];
            RC_ASSERT(box.maxPoint().distanceTo(then.maxPoint()) == 0.0);
        }
    });
}
