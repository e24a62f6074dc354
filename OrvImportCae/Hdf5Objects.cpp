#include "OrvImportCae/Hdf5Objects.h"

#include "OrvImportCae/Hdf5Chunks.h"
#include "OrvImportCae/Hdf5FractalHeap.h"
#include "OrvImportCae/Hdf5Trees.h"

#include <algorithm>

namespace orv::imp::cae {
namespace {

// Records of B-trees of links and attributes.
constexpr std::uint64_t LINK_ID_SIZE = 7;
constexpr std::uint64_t ATTRIBUTE_ID_SIZE = 8;
constexpr std::uint64_t HASH_SIZE = 4;
constexpr std::uint64_t LINK_ORDER_SIZE = 8;
constexpr std::uint64_t ATTRIBUTE_ORDER_SIZE = 4;

void expectDense(const Hdf5Input& input, const Hdf5Dense& dense) {
    if (dense.names == HDF5_UNDEFINED) {
        input.fail(dense.heap, "expected an index of the names in a fractal heap, found none");
    }
}

} // namespace

Hdf5Objects::Hdf5Objects(Hdf5Input& input) : m_input(input), m_globalHeaps(input) {}

void Hdf5Objects::check(std::uint64_t root) {
    visit(root);
    while (!m_pending.empty()) {
        const std::uint64_t next = m_pending.back();
        m_pending.pop_back();
        checkObject(next);
    }
}

const std::vector<std::string>& Hdf5Objects::files() const {
    return m_files;
}

void Hdf5Objects::checkObject(std::uint64_t address) {
    const Hdf5Header header = readHdf5Header(m_input, address);
    for (const Hdf5Message& message : header.messages) {
        checkMessage(message);
    }
    checkData(header);
}

void Hdf5Objects::checkMessage(const Hdf5Message& message) {
    Hdf5Cursor body = message.body;
    if (message.isShared && message.type != HDF5_TYPE) {
        body.fail("expected only types to be shared, found a shared message of the type " +
                  std::to_string(message.type));
    }
    switch (message.type) {
    case HDF5_SPACE:
        readHdf5Space(body);
        break;
    case HDF5_TYPE:
        typeOf(message);
        break;
    case HDF5_OLD_FILL:
        readHdf5OldFill(body);
        break;
    case HDF5_FILL:
        readHdf5Fill(body);
        break;
    case HDF5_FILTERS:
        readHdf5Filters(body);
        break;
    case HDF5_LAYOUT:
        readHdf5Layout(body);
        break;
    case HDF5_EXTERNAL_FILES:
        checkExternalFiles(body);
        break;
    case HDF5_SYMBOLS:
        checkSymbols(body);
        break;
    case HDF5_LINK:
        checkLink(body);
        break;
    case HDF5_LINK_INFO:
        checkLinks(readHdf5LinkInfo(body));
        break;
    case HDF5_ATTRIBUTE:
        checkAttribute(body);
        break;
    case HDF5_ATTRIBUTE_INFO:
        checkAttributes(readHdf5AttributeInfo(body));
        break;
    default:
        checkHdf5Message(message.type, body);
        break;
    }
}

// What the messages of a data set say must fit together.
void Hdf5Objects::checkData(const Hdf5Header& header) {
    const Hdf5Message* typeMessage = header.find(HDF5_TYPE);
    const Hdf5Message* spaceMessage = header.find(HDF5_SPACE);
    const Hdf5Message* layoutMessage = header.find(HDF5_LAYOUT);
    if (!typeMessage || !spaceMessage || !layoutMessage) {
        return;
    }
    const Hdf5Type type = typeOf(*typeMessage);
    Hdf5Cursor spaceBody = spaceMessage->body;
    const Hdf5Space space = readHdf5Space(spaceBody);
    Hdf5Cursor layoutBody = layoutMessage->body;
    const Hdf5Layout layout = readHdf5Layout(layoutBody);
    for (const std::uint64_t fill : {std::uint64_t(HDF5_FILL), std::uint64_t(HDF5_OLD_FILL)}) {
        if (const Hdf5Message* message = header.find(fill)) {
            Hdf5Cursor body = message->body;
            const std::uint64_t size = fill == HDF5_FILL ? readHdf5Fill(body) : readHdf5OldFill(body);
            body.expectBetween("the size of a fill value", size, size == 0 ? 0 : type.size, type.size);
        }
    }
    std::vector<Hdf5Filter> filters;
    if (const Hdf5Message* message = header.find(HDF5_FILTERS)) {
        Hdf5Cursor body = message->body;
        filters = readHdf5Filters(body);
    }
    const std::uint64_t size = hdf5Product(space.count, type.size);
    spaceBody.expectBetween("the bytes of values", size, 0, HDF5_UNDEFINED >> 1);
    if (layout.kind == Hdf5Layout::CHUNKED) {
        checkChunkShape(layout, space, type.size, !filters.empty(), layoutBody);
        checkHdf5Chunks(m_input, layout, space, filters);
    } else if (layout.kind == Hdf5Layout::VIRTUAL) {
        checkVirtual(layout);
    } else {
        checkPlace(layout, size, header.find(HDF5_EXTERNAL_FILES) != nullptr, layoutBody);
    }
}

void Hdf5Objects::checkPlace(const Hdf5Layout& layout, std::uint64_t size, bool isExternal, const Hdf5Cursor& message) {
    message.expectBetween("the bytes of values", layout.size, size, HDF5_UNDEFINED);
    if (layout.kind == Hdf5Layout::CONTIGUOUS && layout.address != HDF5_UNDEFINED && !isExternal) {
        m_input.expectRoom(layout.address, layout.size == HDF5_UNDEFINED ? size : layout.size,
                           "the values of a data set");
    }
}

// HDF5 takes what comes out of filters for a whole chunk, so that there none may be larger than those that it makes.
void Hdf5Objects::checkChunkShape(const Hdf5Layout& layout, const Hdf5Space& space, std::uint64_t typeSize,
                                  bool isPacked, const Hdf5Cursor& message) const {
    message.expectBetween("the dimensions of chunks", layout.chunk.size() - 1, space.sizes.size(), space.sizes.size());
    message.expectBetween("the bytes of a value", layout.chunk.back(), typeSize, typeSize);
    for (std::size_t d = 0; isPacked && space.count > 0 && d < space.most.size(); ++d) {
        message.expectBetween("the size of chunks", layout.chunk[d], 1, space.most[d]);
    }
}

// Its list tells how much memory is to be taken. A sum is behind it, so that only whole ones are read.
void Hdf5Objects::checkVirtual(const Hdf5Layout& layout) {
    constexpr std::uint64_t SUM_SIZE = 4;
    if (layout.address == HDF5_UNDEFINED) {
        return;
    }
    Hdf5Cursor list = m_globalHeaps.item(layout.address, layout.item);
    list.expectBetween("the bytes", list.left(), 1 + m_input.sizes().length + SUM_SIZE, HDF5_UNDEFINED);
    const std::uint32_t sum = hdf5Sum(list.bytes(list.left() - SUM_SIZE));
    list.expectBetween("the sum", list.number(SUM_SIZE), sum, sum);
}

void Hdf5Objects::checkExternalFiles(Hdf5Cursor message) {
    message.expectBetween("the version of external files", message.number(1), 1, 1);
    message.skip(3);
    const std::uint64_t room = message.number(2);
    const std::uint64_t count = message.number(2);
    message.expectBetween("the number of external files", count, 0, room);
    const Hdf5LocalHeap names(m_input, message.address());
    for (std::uint64_t i = 0; i < count; ++i) {
        names.expectText(message.length(), message);
        message.skip(2 * message.sizes().length);
    }
}

void Hdf5Objects::checkSymbols(Hdf5Cursor message) {
    const std::uint64_t tree = message.address();
    const Hdf5LocalHeap heap(m_input, message.address());
    walkHdf5OldTree(m_input, tree, Hdf5OldTree::GROUP, m_input.sizes().length,
                    [&](Hdf5Cursor key, std::uint64_t child) {
                        const Hdf5Cursor place = key;
                        heap.expectText(key.length(), place);
                        if (child != HDF5_UNDEFINED) {
                            checkSymbolNode(child, heap);
                        }
                    });
}

void Hdf5Objects::checkSymbolNode(std::uint64_t address, const Hdf5LocalHeap& heap) {
    constexpr const char* NODE = "a symbol node";
    constexpr std::uint64_t HEAD_SIZE = 8;
    constexpr std::uint64_t IS_SOFT = 2;
    const Hdf5Sizes& sizes = m_input.sizes();
    const std::uint64_t entrySize = sizes.length + sizes.address + 4 + 4 + 16;
    m_input.expectRoom(address, HEAD_SIZE + 2 * sizes.leafK * entrySize, NODE);
    const Hdf5Block head = m_input.read(address, HEAD_SIZE, NODE);
    Hdf5Cursor cursor = head.cursor(sizes, NODE);
    cursor.expect("SNOD");
    cursor.expectBetween("the version", cursor.number(1), 1, 1);
    cursor.skip(1);
    const std::uint64_t count = cursor.number(2);
    cursor.expectBetween("the number of symbols", count, 0, 2 * sizes.leafK);
    const Hdf5Block body = m_input.read(address + HEAD_SIZE, count * entrySize, NODE);
    Hdf5Cursor entries = body.cursor(sizes, NODE);
    for (std::uint64_t i = 0; i < count; ++i) {
        Hdf5Cursor entry = entries.piece(entrySize, "a symbol");
        const Hdf5Cursor place = entry;
        heap.expectText(entry.length(), place);
        const std::uint64_t object = entry.address();
        const std::uint64_t kind = entry.number(4);
        entry.expectBetween("the kind", kind, 0, IS_SOFT);
        entry.skip(4);
        if (kind == IS_SOFT) {
            heap.expectText(entry.number(4), place);
        } else {
            visit(object);
        }
    }
}

void Hdf5Objects::checkLinks(const Hdf5Dense& dense) {
    constexpr const char* LINK = "a link";
    if (dense.heap == HDF5_UNDEFINED) {
        return;
    }
    expectDense(m_input, dense);
    Hdf5FractalHeap heap(m_input, dense.heap);
    const std::uint64_t names =
        walkHdf5Tree(m_input, dense.names, Hdf5Tree::LINK_NAMES, HASH_SIZE + LINK_ID_SIZE, [&](Hdf5Cursor record) {
            record.skip(HASH_SIZE);
            checkLink(heap.item(record.piece(LINK_ID_SIZE, "the id of a link"), LINK));
        });
    if (dense.order == HDF5_UNDEFINED) {
        return;
    }
    const std::uint64_t ordered = walkHdf5Tree(
        m_input, dense.order, Hdf5Tree::LINK_ORDER, LINK_ORDER_SIZE + LINK_ID_SIZE, [&](Hdf5Cursor record) {
            record.skip(LINK_ORDER_SIZE);
            checkLink(heap.item(record.piece(LINK_ID_SIZE, "the id of a link"), LINK));
        });
    if (ordered != names) {
        m_input.fail(dense.order, "expected " + std::to_string(names) + " links, found " + std::to_string(ordered));
    }
}

void Hdf5Objects::checkLink(Hdf5Cursor message) {
    const Hdf5Link link = readHdf5Link(message);
    if (link.kind == Hdf5Link::HARD) {
        visit(link.address);
    } else if (link.kind == Hdf5Link::EXTERNAL &&
               std::find(m_files.begin(), m_files.end(), link.file) == m_files.end()) {
        m_files.push_back(link.file);
    }
}

void Hdf5Objects::checkAttributes(const Hdf5Dense& dense) {
    if (dense.heap == HDF5_UNDEFINED) {
        return;
    }
    expectDense(m_input, dense);
    Hdf5FractalHeap heap(m_input, dense.heap);
    const auto checkRecord = [&](Hdf5Cursor record) {
        const Hdf5Cursor id = record.piece(ATTRIBUTE_ID_SIZE, "the id of an attribute");
        record.expectBetween("the flags", record.number(1) & 2, 0, 0); // Shared ones are in a heap of all objects.
        checkAttribute(heap.item(id, "an attribute"));
    };
    const std::uint64_t names = walkHdf5Tree(m_input, dense.names, Hdf5Tree::ATTRIBUTE_NAMES,
                                             ATTRIBUTE_ID_SIZE + 1 + ATTRIBUTE_ORDER_SIZE + HASH_SIZE, checkRecord);
    if (dense.order == HDF5_UNDEFINED) {
        return;
    }
    const std::uint64_t ordered = walkHdf5Tree(m_input, dense.order, Hdf5Tree::ATTRIBUTE_ORDER,
                                               ATTRIBUTE_ID_SIZE + 1 + ATTRIBUTE_ORDER_SIZE, checkRecord);
    if (ordered != names) {
        m_input.fail(dense.order,
                     "expected " + std::to_string(names) + " attributes, found " + std::to_string(ordered));
    }
}

void Hdf5Objects::checkAttribute(Hdf5Cursor message) {
    Hdf5Attribute attribute = readHdf5Attribute(message, [&](Hdf5Cursor& type) { return sharedType(type); });
    for (std::uint64_t i = 0; attribute.type.isVariable() && i < attribute.space.count; ++i) {
        Hdf5Cursor value = attribute.values.piece(attribute.type.size, "a value of an attribute");
        checkValue(attribute.type, value);
    }
}

// HDF5 makes room for the items that a list counts, and fills it with what the heap has of them.
void Hdf5Objects::checkValue(const Hdf5Type& type, Hdf5Cursor& value) {
    if (type.kind == HDF5_VARIABLE) {
        const Hdf5Type& part = type.parts[0];
        const std::uint64_t count = value.number(4);
        const std::uint64_t heap = value.address();
        const std::uint64_t index = value.number(4);
        if (count == 0 || heap == 0 || heap == HDF5_UNDEFINED) {
            return;
        }
        Hdf5Cursor items = m_globalHeaps.item(heap, index);
        value.expectBetween("the bytes of a list", items.left(), count * part.size, count * part.size);
        m_listBytes += items.left();
        value.expectBetween("the bytes of all lists", m_listBytes, 0, m_input.fileSize());
        for (std::uint64_t i = 0; part.isVariable() && i < count; ++i) {
            Hdf5Cursor item = items.piece(part.size, "an item of a list");
            checkValue(part, item);
        }
    } else if (type.kind == HDF5_COMPOUND) {
        for (std::size_t i = 0; i < type.parts.size(); ++i) {
            Hdf5Cursor member = value;
            member.skip(type.offsets[i]);
            checkValue(type.parts[i], member);
        }
    } else if (type.kind == HDF5_ARRAY && type.isVariable()) {
        for (std::uint64_t i = 0; i < type.size / type.parts[0].size; ++i) {
            Hdf5Cursor item = value.piece(type.parts[0].size, "an item of an array");
            checkValue(type.parts[0], item);
        }
    }
}

Hdf5Type Hdf5Objects::typeOf(const Hdf5Message& message) {
    Hdf5Cursor body = message.body;
    return message.isShared ? sharedType(body) : readHdf5Type(body);
}

Hdf5Type Hdf5Objects::sharedType(Hdf5Cursor message) {
    const Hdf5Cursor place = message;
    const std::uint64_t address = readHdf5Shared(message);
    const auto known = m_types.find(address);
    if (known != m_types.end()) {
        return known->second;
    }
    const Hdf5Header header = readHdf5Header(m_input, address);
    const Hdf5Message* found = header.find(HDF5_TYPE);
    if (!found || found->isShared) {
        place.fail("expected a type in the header of an object at byte " + std::to_string(address) + ", found none");
    }
    Hdf5Cursor body = found->body;
    return m_types.emplace(address, readHdf5Type(body)).first->second;
}

void Hdf5Objects::visit(std::uint64_t address) {
    if (m_seen.insert(address).second) {
        m_pending.push_back(address);
    }
}

} // namespace orv::imp::cae
