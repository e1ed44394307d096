#include "orvshape/endpoint_interface.h"

#include "curve_fixture.h"

using orv::geom::EndpointList;

TEST(EndpointList, KeepsTheOrderAndFindsTheNearest) {
    EndpointList list;
    EXPECT_EQ(list.nearest({0, 0, 0}, 100.0), nullptr);
    list.addEndpoint({{1, 0, 0}, {-1, 0, 0}, AcDbObjectId()});
    list.addEndpoint({{-1, 0, 0}, {1, 0, 0}, AcDbObjectId()});
    list.addEndpoint({{0, 0.5, 0}, {0, 1, 0}, AcDbObjectId()});
    ASSERT_EQ(list.endpoints().size(), 3u);
    EXPECT_EQ(list.nearest({0, 0, 0}, 100.0), &list.endpoints()[2]);
    EXPECT_EQ(list.nearest({0, -9, 0}, 100.0), &list.endpoints()[0]); // two are equally near
    EXPECT_EQ(list.nearest({0, 0, 0}, 0.5), &list.endpoints()[2]);
    EXPECT_EQ(list.nearest({0, 0, 0}, 0.4), nullptr);
}
