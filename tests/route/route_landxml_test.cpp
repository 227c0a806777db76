#include "route/route_test_util.h"

#include <orvmath/landxml.h>

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace route_test;

namespace {

// Written by hand: from mile 500, a straight of 100 east, a clothoid A = 100 (INF to R 200, 50 long, 0.125 rad), a
// left arc of R 200 for 0.5 rad (100 long), a clothoid out (R 200 to INF, 50 long) and a straight of 80 at 0.75 rad.
// The clothoid ends were integrated numerically (Simpson, 20000 steps, in /tmp) from heading(s) = s^2 / (2 A^2) and
// 0.625 + (s - s^2 / 100) / 200; every PI is where the end tangents meet. Coordinates are "northing easting".
const char* const kAlignment = R"(<?xml version="1.0"?>
<LandXML xmlns="http://www.landxml.org/schema/LandXML-1.2" version="1.2" date="2026-11-24" time="12:00:00">
 <Units><Metric linearUnit="meter" areaUnit="squareMeter" volumeUnit="cubicMeter" angularUnit="radians"
                directionUnit="radians"/></Units>
 <Alignments>
  <Alignment name="Main road" length="380" staStart="500">
   <CoordGeom>
    <Line length="100"><Start>1000 2000</Start><End>1000 2100</End></Line>
    <Spiral length="50" radiusStart="INF" radiusEnd="200" rot="ccw" spiType="clothoid">
     <Start>1000 2100</Start><PI>1000 2133.360655950952</PI><End>1002.081009340177 2149.921931493660</End>
    </Spiral>
    <Curve rot="ccw" radius="200" length="100"><Start>1002.081009340177 2149.921931493660</Start>
     <Center>1200.520542786043 2124.986984816614</Center><End>1038.327918885000 2242.006439404707</End></Curve>
    <Spiral length="50" radiusStart="200" radiusEnd="INF" rot="ccw" spiType="clothoid">
     <Start>1038.327918885000 2242.006439404707</Start><PI>1048.094074840106 2255.542636999895</PI>
     <End>1070.833990996078 2279.952257617535</End></Spiral>
    <Line length="80"><Start>1070.833990996078 2279.952257617535</Start>
     <End>1125.365091797944 2338.487367127441</End></Line>
   </CoordGeom>
   <Profile><ProfAlign name="vertical"/></Profile>
  </Alignment>
  <Alignment name="Ramp" staStart="0">
   <CoordGeom>
    <Spiral length="30" radiusStart="INF" radiusEnd="100" rot="cw" spiType="cubic">
     <Start>0 0</Start><PI>0 20</PI><End>-1.5 29.9</End></Spiral>
   </CoordGeom>
  </Alignment>
 </Alignments>
</LandXML>
)";

}  // namespace

TEST(LandXml, ReadsTheAlignmentReportsWhatItSkipsAndRoundTrips) {
    if (!LandXmlSupported()) GTEST_SKIP() << "built without pugixml";
    CLandXmlRead read;
    ASSERT_TRUE(ReadLandXml(kAlignment, read)) << read.error;
    ASSERT_EQ(read.alignments.size(), 2u);
    ASSERT_EQ(read.unsupported.size(), 2u);  // the profile, the cubic spiral
    EXPECT_NE(read.unsupported[0].find("<Profile>"), std::string::npos) << read.unsupported[0];
    EXPECT_NE(read.unsupported[1].find("spiType 'cubic'"), std::string::npos) << read.unsupported[1];

    const CRoute2& road = read.alignments[0].route;
    EXPECT_EQ(read.alignments[0].name, "Main road");
    ASSERT_EQ(road.GetCriticalPoints().GetSize(), 6);
    EXPECT_EQ(road.GetStartMile(), 500.0);
    EXPECT_NEAR(road.GetMile(), 380.0, 1e-9);
    const CCriticalPoint& in = road.GetCriticalPoints()[1];
    EXPECT_EQ(in.type, SEGMENT_TRANSITION);
    EXPECT_NEAR(in.spiralA, 100.0, 1e-9);  // sqrt(50 / (1/200))
    EXPECT_TRUE(in.radius == -1.0 && in.endRadius == 200.0);
    EXPECT_NEAR(road.GetCriticalPoints()[3].angle, 0.625, 1e-12);
    // The exact clothoids meet the next element within 1e-8 m and 1e-9 rad.
    CArray<CRoute2::Problem> problems;
    EXPECT_EQ(road.Validate(problems, 1e-8, 1e-9), 0);
    EXPECT_EQ(read.alignments[1].route.GetCriticalPoints()[0].type, SEGMENT_LINE);

    CLandXmlRead again;
    ASSERT_TRUE(ReadLandXml(WriteLandXml(read.alignments), again)) << again.error;
    ASSERT_EQ(again.alignments.size(), 2u);
    EXPECT_TRUE(again.unsupported.empty());
    for (std::size_t a = 0; a < 2; ++a) {
        const CCriticalPointArray& p = read.alignments[a].route.GetCriticalPoints();
        const CCriticalPointArray& q = again.alignments[a].route.GetCriticalPoints();
        ASSERT_EQ(p.GetSize(), q.GetSize());
        EXPECT_EQ(again.alignments[a].route.GetStartMile(), read.alignments[a].route.GetStartMile());
        for (INT_PTR i = 0; i < p.GetSize(); ++i) {
            EXPECT_EQ(p[i].type, q[i].type) << i;
            EXPECT_LE(Distance(p[i].pt, q[i].pt), 1e-9) << i;
            EXPECT_NEAR(p[i].angle, q[i].angle, 1e-12) << i;
            EXPECT_NEAR(p[i].radius, q[i].radius, 1e-9) << i;
            EXPECT_NEAR(p[i].spiralA, q[i].spiralA, 1e-9) << i;
        }
    }
}

TEST(LandXml, RefusesWhatItCannotReadAndReportsGaps) {
    if (!LandXmlSupported()) GTEST_SKIP() << "built without pugixml";
    const std::string head = "<LandXML><Alignments><Alignment name=\"a\"><CoordGeom>";
    const std::string tail = "</CoordGeom></Alignment></Alignments></LandXML>";
    const struct { std::string text; const char* says; } rows[] = {
        {"<LandXML><Alignments>", "not XML"},
        {"<LandXML/>", "no <Alignments>"},
        {"<LandXML><Units><Imperial/></Units><Alignments/></LandXML>", "imperial"},
        {head + "<Line><Start>0 0</Start></Line>" + tail, "needs <End>"},
        {head + "<Curve radius=\"10\"><Start>0 0</Start><Center>10 0</Center><End>10 10</End></Curve>" + tail, "rot="},
        {head + "<Spiral length=\"10\" radiusStart=\"50\" radiusEnd=\"50\" rot=\"cw\"><Start>0 0</Start><PI>0 5</PI>"
                "<End>0 10</End></Spiral>" + tail, "two different radii"},
        {head + "<Spiral length=\"10\" radiusStart=\"-3\" radiusEnd=\"INF\" rot=\"cw\"><Start>0 0</Start><PI>0 5</PI>"
                "<End>0 10</End></Spiral>" + tail, "positive number or INF"},
        {"<LandXML><Alignments><Alignment name=\"a\"/></Alignments></LandXML>", "no <CoordGeom> elements"},
    };
    CLandXmlRead gap;  // a straight ending at (10, 0), the next starting at (10, 2): read, and reported
    ASSERT_TRUE(ReadLandXml(head + "<Line><Start>0 0</Start><End>0 10</End></Line><Line><Start>2 10</Start>"
                                   "<End>2 20</End></Line>" + tail, gap)) << gap.error;
    ASSERT_EQ(gap.unsupported.size(), 1u);
    EXPECT_NE(gap.unsupported[0].find("element 1 starts 2.000000 m from the End"), std::string::npos);
    for (const auto& r : rows) {
        CLandXmlRead read;
        EXPECT_FALSE(ReadLandXml(r.text, read)) << r.text;
        EXPECT_NE(read.error.find(r.says), std::string::npos) << read.error;
        EXPECT_TRUE(read.alignments.empty());
    }
}
