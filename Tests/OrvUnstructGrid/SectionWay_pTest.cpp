#include "OrvUnstructGrid/SectionWay_p.h"

#include "Tests/OrvUnstructGrid/SurfaceTopologyModels.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

using namespace orv::ug;
using orv::UNDEFINED_SIZE_T;
using orv::Vec3d;
using orvtest::Mesh;
using testing::IsEmpty;

namespace {

/// A part and its section.
class Cut {
public:
    Cut(const Mesh& mesh, const Vec3d& point, const Vec3d& normal) {
        m_part.nodes()->set(mesh.coordinates(), {});
        m_part.elements()->set(mesh.types, mesh.connectivity, {});
        m_section = sectionOf(m_part, m_part.nodes()->coordinates(), point, normal);
    }

    ShownSection shown(std::size_t partIndex) const {
        return {0, partIndex, &m_part, &m_section};
    }

    Vec3d mean(const NodeMean& nodes) const {
        Vec3d sum;
        for (std::size_t i = 0; i < NodeMean::MAX_TERMS; ++i) {
            sum += m_part.nodes()->node(m_part.elements()->connectivity()[nodes.places[i]]) * nodes.weights[i];
        }
        return sum;
    }

private:
    DataPart m_part{1};
    PlaneSection m_section;
};

void expectNear(const Vec3d& actual, const Vec3d& expected) {
    EXPECT_NEAR((actual - expected).length(), 0.0, 1e-12);
}

TEST(SectionWayTest, AnyWayThroughABlockIsWholeAndInItsElements) {
    // The nodes of a block that is bent out of shape, by which each sample must be where its point is.
    std::mt19937 engine(3);
    auto random = [&engine] { return engine() / 4294967296.0; };
    const Mesh mesh = orvtest::block(5, 5, 5).mapped([&random](const Vec3d& p) {
        const bool isInside = p.x() > 0 && p.x() < 5 && p.y() > 0 && p.y() < 5 && p.z() > 0 && p.z() < 5;
        return isInside ? p + Vec3d(random() - 0.5, random() - 0.5, random() - 0.5) * 0.4 : p;
    });
    for (int i = 0; i < 100; ++i) {
        const Vec3d middle(2.5, 2.5, 2.5);
        const Vec3d direction(random() - 0.5, random() - 0.5, random() - 0.5);
        const Vec3d normal = direction / direction.length();
        const Cut cut(mesh, middle, normal);
        const Vec3d across = normal ^ Vec3d(random() - 0.5, random() - 0.5, random() - 0.5);
        const Vec3d half = across * (2.4 / across.length()); // Not out of the block.
        const std::vector<ShownSection> sections = {cut.shown(4)};
        const std::vector<PathSegment> way = sectionWay(sections, normal, middle - half, middle + half);
        ASSERT_FALSE(way.empty());
        expectNear(way.front().begin, middle - half);
        expectNear(way.back().end, middle + half);
        for (std::size_t s = 0; s < way.size(); ++s) {
            EXPECT_EQ(way[s].partIndex, 4u); // No gap.
            EXPECT_GT(way[s].length(), 0.0);
            expectNear(cut.mean(way[s].atBegin), way[s].begin);
            expectNear(cut.mean(way[s].atEnd), way[s].end);
            if (s > 0) {
                expectNear(way[s].begin, way[s - 1].end);
            }
        }
    }
}

TEST(SectionWayTest, AWayThatLeadsOutEndsInAGap) {
    const Cut cut(orvtest::block(1, 1, 1), {0, 0, 0.5}, {0, 0, 1});
    const std::vector<ShownSection> sections = {cut.shown(0)};
    const std::vector<PathSegment> way = sectionWay(sections, {0, 0, 1}, {-1, 0.25, 0.5}, {3, 0.25, 0.5});
    ASSERT_EQ(way.size(), 4u); // The square is two triangles.
    EXPECT_EQ(way[0].partIndex, UNDEFINED_SIZE_T);
    EXPECT_EQ(way[0].end, Vec3d(0, 0.25, 0.5));
    EXPECT_EQ(way[1].partIndex, 0u);
    EXPECT_EQ(way[2].partIndex, 0u);
    EXPECT_EQ(way[3].partIndex, UNDEFINED_SIZE_T);
    EXPECT_EQ(way[3].begin, Vec3d(1, 0.25, 0.5));
    EXPECT_EQ(way[3].end, Vec3d(3, 0.25, 0.5));
}

TEST(SectionWayTest, AlongSidesOfATiltedSectionNothingIsLeftToRoundings) {
    const auto tilt = [](const Vec3d& p) {
        // Orthonormal columns.
        return Vec3d(10, -20, 30) + Vec3d(2, -1, 2) * (p.x() / 3) + Vec3d(2, 2, -1) * (p.y() / 3) +
               Vec3d(-1, 2, 2) * (p.z() / 3);
    };
    const Vec3d normal = tilt({0, 0, 1}) - tilt({0, 0, 0});
    const Cut cut(orvtest::block(7, 7, 1).mapped(tilt), tilt({0, 0, 0.3}), normal);
    const std::vector<ShownSection> sections = {cut.shown(0)};
    for (int i = 0; i <= 7; ++i) {
        EXPECT_EQ(sectionWay(sections, normal, tilt({0.0, double(i), 0.3}), tilt({7.0, double(i), 0.3})).size(), 7u);
        EXPECT_EQ(sectionWay(sections, normal, tilt({double(i), 7.0, 0.3}), tilt({double(i), 0.0, 0.3})).size(), 7u);
    }
}

TEST(SectionWayTest, BesideASectionThereIsNothing) {
    const Cut cut(orvtest::block(1, 1, 1), {0, 0, 0.5}, {0, 0, 1});
    const std::vector<ShownSection> sections = {cut.shown(0)};
    EXPECT_THAT(sectionWay(sections, {0, 0, 1}, {-1, 1.25, 0.5}, {3, 1.25, 0.5}), IsEmpty());
    EXPECT_THAT(sectionWay(sections, {0, 0, 1}, {1, 0.5, 0.5}, {3, 0.5, 0.5}), IsEmpty()); // From its side on.
    EXPECT_THAT(sectionWay(sections, {0, 0, 1}, {-1, 0.5, 0.5}, {0, 0.5, 0.5}), IsEmpty());
    EXPECT_THAT(sectionWay(sections, {0, 0, 1}, {-0.5, 0.5, 0.5}, {0.5, -0.5, 0.5}), IsEmpty()); // By its corner.
    EXPECT_THAT(sectionWay({}, {0, 0, 1}, {0, 0, 0}, {1, 0, 0}), IsEmpty());
}

TEST(SectionWayTest, BeamsArePointsWithoutALength) {
    Mesh mesh;
    mesh.nodes = {{0.5, 0, 0}, {0.5, 0, 1}};
    mesh.addElement(BEAM, {0, 1});
    const Cut cut(mesh, {0, 0, 0.5}, {0, 0, 1});
    const std::vector<ShownSection> sections = {cut.shown(0)};
    EXPECT_THAT(sectionWay(sections, {0, 0, 1}, {0, 0, 0.5}, {1, 0, 0.5}), IsEmpty());
}

} // namespace
