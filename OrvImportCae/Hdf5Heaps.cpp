#include "OrvImportCae/Hdf5Heaps.h"

#include <utility>

namespace orv::imp::cae {
namespace {

constexpr const char* LOCAL_HEAP = "a local heap";
constexpr const char* GLOBAL_HEAP = "a global heap";

} // namespace

Hdf5LocalHeap::Hdf5LocalHeap(Hdf5Input& input, std::uint64_t address) {
    constexpr std::uint64_t NO_FREE_BLOCK = 1;
    const Hdf5Sizes& sizes = input.sizes();
    const Hdf5Block head = input.read(address, 8 + 2 * sizes.length + sizes.address, LOCAL_HEAP);
    Hdf5Cursor cursor = head.cursor(sizes, LOCAL_HEAP);
    cursor.expect("HEAP");
    cursor.expectBetween("the version", cursor.number(1), 0, 0);
    cursor.skip(3);
    const std::uint64_t size = cursor.length();
    const std::uint64_t firstFree = cursor.length();
    if (size == 0) {
        cursor.expectBetween("the first free block", firstFree, NO_FREE_BLOCK, NO_FREE_BLOCK);
        return;
    }
    const Hdf5Block data = input.read(cursor.address(), size, LOCAL_HEAP);
    if (firstFree != NO_FREE_BLOCK) {
        checkFreeList(data, firstFree, sizes);
    }
    const std::string_view texts(data.bytes.data(), data.bytes.size());
    m_textEnd = texts.rfind('\0') + 1; // npos + 1 is 0.
}

// Each free block tells where the next one is: going round in circles there would be more than there is room for.
void Hdf5LocalHeap::checkFreeList(const Hdf5Block& data, std::uint64_t first, const Hdf5Sizes& sizes) const {
    constexpr std::uint64_t NONE = 1;
    std::uint64_t left = data.bytes.size() / (2 * sizes.length);
    for (std::uint64_t offset = first; offset != NONE;) {
        Hdf5Cursor cursor = data.cursor(sizes, "the free blocks of a local heap");
        cursor.skip(offset);
        const std::uint64_t here = cursor.left();
        offset = cursor.length();
        cursor.expectBetween("the size", cursor.length(), 0, here);
        if (left-- == 0) {
            cursor.failAtLast("expected different free blocks of a local heap, found one twice");
        }
    }
}

void Hdf5LocalHeap::expectText(std::uint64_t offset, const Hdf5Cursor& user) const {
    if (offset >= m_textEnd) {
        user.fail("expected a name before byte " + std::to_string(m_textEnd) + " of its heap, found it at byte " +
                  std::to_string(offset));
    }
}

Hdf5GlobalHeaps::Hdf5GlobalHeaps(Hdf5Input& input) : m_input(input) {}

Hdf5Cursor Hdf5GlobalHeaps::item(std::uint64_t address, std::uint64_t index) {
    const auto [place, isNew] = m_heaps.try_emplace(address);
    if (isNew) {
        const std::uint64_t headSize = 8 + m_input.sizes().length;
        const Hdf5Block head = m_input.read(address, headSize, GLOBAL_HEAP);
        Hdf5Cursor cursor = head.cursor(m_input.sizes(), GLOBAL_HEAP);
        cursor.expect("GCOL");
        cursor.expectBetween("the version", cursor.number(1), 1, 1);
        cursor.skip(3);
        const std::uint64_t size = cursor.length();
        cursor.expectBetween("the size", size, headSize, m_input.fileSize());
        place->second.block = m_input.read(address, size, GLOBAL_HEAP);
        readItems(&place->second);
    }
    const auto found = place->second.items.find(index);
    if (found == place->second.items.end()) {
        m_input.fail(address, "expected item " + std::to_string(index) + " in a global heap, found none");
    }
    return found->second;
}

// The item 0 is what is free, and counts its own head.
void Hdf5GlobalHeaps::readItems(Heap* heap) const {
    const std::uint64_t headSize = 8 + m_input.sizes().length;
    Hdf5Cursor cursor = heap->block.cursor(m_input.sizes(), GLOBAL_HEAP);
    cursor.skip(headSize);
    while (cursor.left() >= headSize) {
        const std::uint64_t room = cursor.left();
        const std::uint64_t index = cursor.number(2);
        cursor.skip(2 + 4);
        const std::uint64_t size = cursor.length();
        if (index == 0) {
            cursor.expectBetween("the free room", size, headSize, room);
            cursor.skip(size - headSize);
        } else {
            heap->items.insert_or_assign(index, cursor.piece(size, "an item of a global heap"));
            cursor.skip((8 - size % 8) % 8);
        }
    }
}

} // namespace orv::imp::cae
