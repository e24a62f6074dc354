#include "OrvUnstructGrid/ZtfxPayload_p.h"

#include "Tests/OrvUnstructGrid/ZtfxFiles.h"

#include <gtest/gtest.h>

using namespace orv::ug;

namespace {

/// All bytes, asked for in pieces of that size.
std::string readAll(ZtfxPayload* payload, std::size_t pieceSize) {
    std::string all, piece(pieceSize, '\0');
    while (const std::size_t got = payload->read(piece.data(), pieceSize)) {
        all.append(piece, 0, got);
    }
    return all;
}

std::string bytesOf(const void* values, std::size_t size) {
    return {static_cast<const char*>(values), size};
}

ZtfxChecksum checksumOf(const std::string& bytes) {
    ZtfxHasher hasher;
    hasher.update(bytes.data(), bytes.size());
    return hasher.checksum();
}

TEST(ZtfxPayload, IsEmptyAtFirst) {
    ZtfxPayload payload;
    EXPECT_EQ(payload.byteCount(), 0u);
    EXPECT_EQ(readAll(&payload, 8), "");
}

TEST(ZtfxPayload, GivesBytesAgainAfterARewind) {
    const std::vector<int> ids = {1, 2, 3};
    ZtfxPayload payload;
    payload.setBytes(std::as_bytes(std::span(ids)));
    const std::string expected = bytesOf(ids.data(), 12);
    for (const std::size_t size : {1, 5, 12, 100}) {
        EXPECT_EQ(readAll(&payload, size), expected);
        EXPECT_EQ(readAll(&payload, size), "");
        payload.rewind();
    }
    const ZtfxArray array = payload.describe(ZtfxType::INT32, 1);
    EXPECT_EQ(array, (ZtfxArray{0, ZtfxType::INT32, 3, 1, checksumOf(expected)}));
}

TEST(ZtfxPayload, JoinsPiecesOfReals) {
    const std::vector<double> a = {0.1, 0.2}, empty, b = {0.3, 0.5, 0.5, 0.5};
    ZtfxPayload payload;
    payload.setReals({a, empty, b});
    const std::string expected = bytesOf(a.data(), 16) + bytesOf(b.data(), 32);
    EXPECT_EQ(payload.byteCount(), 48u);
    for (const std::size_t size : {3, 16, 100}) {
        EXPECT_EQ(readAll(&payload, size), expected);
        payload.rewind();
    }
    EXPECT_EQ(payload.describe(ZtfxType::FLOAT64, 3), (ZtfxArray{0, ZtfxType::FLOAT64, 2, 3, checksumOf(expected)}));
}

TEST(ZtfxPayload, NarrowsRealsWhenAllPiecesFit) {
    // More than one refill of the floats.
    const std::vector<double> a(5000, 0.25), b = {orv::UNDEFINED_DOUBLE, -0.0};
    std::vector<float> floats(5000, 0.25f);
    floats.insert(floats.end(), {std::numeric_limits<float>::max(), -0.0f});
    const std::string expected = bytesOf(floats.data(), floats.size() * 4);
    ZtfxPayload payload;
    payload.setReals({a, b});
    EXPECT_EQ(payload.byteCount(), expected.size());
    for (const std::size_t size : {7, 8192, 100000}) {
        EXPECT_EQ(readAll(&payload, size), expected);
        payload.rewind();
    }
    char some[10];
    payload.read(some, 10);
    EXPECT_EQ(payload.describe(ZtfxType::FLOAT64, 1), (ZtfxArray{0, ZtfxType::FLOAT32, 5002, 1, checksumOf(expected)}));
    const std::vector<double> c = {0.1};
    payload.setReals({a, c});
    EXPECT_EQ(payload.byteCount(), 8u * 5001);
    EXPECT_EQ(payload.describe(ZtfxType::FLOAT64, 1).type, ZtfxType::FLOAT64);
}

} // namespace
