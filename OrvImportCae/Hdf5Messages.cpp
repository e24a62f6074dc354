#include "OrvImportCae/Hdf5Messages.h"

#include "OrvImportCae/Hdf5Header.h"

#include <utility>

namespace orv::imp::cae {
namespace {

constexpr std::uint64_t MOST_DIMENSIONS = 32;
constexpr std::uint64_t MOST_BYTES = std::uint64_t(1) << 62;

std::vector<std::uint64_t> readLengths(Hdf5Cursor& message, std::uint64_t count) {
    std::vector<std::uint64_t> lengths;
    for (std::uint64_t i = 0; i < count; ++i) {
        lengths.push_back(message.length());
    }
    return lengths;
}

std::uint64_t productOf(const std::vector<std::uint64_t>& sizes) {
    std::uint64_t all = 1;
    for (const std::uint64_t size : sizes) {
        all = hdf5Product(all, size);
    }
    return all;
}

// All bits are set in one that does not end.
std::uint64_t unlimited(const Hdf5Cursor& message) {
    const std::size_t size = message.sizes().length;
    return size == 8 ? HDF5_UNDEFINED : (std::uint64_t(1) << 8 * size) - 1;
}

// Chunks of more have no room in HDF5's numbers.
void expectChunk(Hdf5Cursor& message, const std::vector<std::uint64_t>& chunk) {
    message.expectBetween("the bytes of a chunk", productOf(chunk), 1, 0xffffffff);
}

void readOldLayout(Hdf5Cursor& message, Hdf5Layout* layout) {
    const std::uint64_t rank = message.number(1);
    message.expectBetween("the dimensions of a layout", rank, 1, MOST_DIMENSIONS + 1);
    layout->kind = message.number(1);
    message.expectBetween("the class of a layout", layout->kind, Hdf5Layout::COMPACT, Hdf5Layout::CHUNKED);
    message.skip(5);
    layout->size = HDF5_UNDEFINED;
    if (layout->kind != Hdf5Layout::COMPACT) {
        layout->address = message.address();
    }
    for (std::uint64_t d = 0; d < rank; ++d) {
        layout->chunk.push_back(message.number(4));
    }
    if (layout->kind == Hdf5Layout::CHUNKED) {
        expectChunk(message, layout->chunk);
    } else if (layout->kind == Hdf5Layout::COMPACT) {
        layout->size = message.number(4);
        message.skip(layout->size);
    }
}

void readChunkedLayout(Hdf5Cursor& message, Hdf5Layout* layout) {
    const std::uint64_t rank = message.number(1);
    message.expectBetween("the dimensions of a layout", rank, 2, MOST_DIMENSIONS + 1);
    layout->address = message.address();
    for (std::uint64_t d = 0; d < rank; ++d) {
        layout->chunk.push_back(message.number(4));
    }
    expectChunk(message, layout->chunk);
}

// The extensible array and the fixed array have what they are made by in their own heads, too.
void readIndexedLayout(Hdf5Cursor& message, Hdf5Layout* layout) {
    enum Flag : std::uint64_t { HAS_PLAIN_EDGES = 1, IS_FILTERED = 2 }; // The last of a single chunk.
    const std::uint64_t flags = message.number(1);
    message.expectBetween("the flags of chunks", flags, 0, 3);
    layout->hasPlainEdges = (flags & HAS_PLAIN_EDGES) != 0;
    const std::uint64_t rank = message.number(1);
    message.expectBetween("the dimensions of a layout", rank, 2, MOST_DIMENSIONS + 1);
    const std::uint64_t size = message.number(1);
    message.expectBetween("the bytes of a chunk's sizes", size, 1, 8);
    for (std::uint64_t d = 0; d < rank; ++d) {
        layout->chunk.push_back(message.number(std::size_t(size)));
    }
    expectChunk(message, layout->chunk);
    layout->index = message.number(1);
    message.expectBetween("the index of chunks", layout->index, Hdf5Layout::SINGLE, Hdf5Layout::TREE);
    if (layout->index == Hdf5Layout::SINGLE && (flags & IS_FILTERED) != 0) {
        layout->packedSize = message.length();
        layout->packedMask = message.number(4);
    }
    constexpr std::uint64_t PARAMETERS[] = {0, 0, 0, 1, 5, 6};
    message.skip(PARAMETERS[layout->index]);
    layout->address = message.address();
}

Hdf5Dense readDense(Hdf5Cursor& message, std::uint64_t orderSize) {
    message.expectBetween("the version", message.number(1), 0, 0);
    const std::uint64_t flags = message.number(1);
    message.expectBetween("the flags", flags, 0, 3);
    message.skip((flags & 1) != 0 ? orderSize : 0);
    Hdf5Dense dense;
    dense.heap = message.address();
    dense.names = message.address();
    if ((flags & 2) != 0) {
        dense.order = message.address();
    }
    return dense;
}

// The names of a file and of an object in it, behind a version and flags.
std::string readExternalFile(Hdf5Cursor target) {
    target.expectBetween("the version and flags", target.number(1), 0, 0);
    std::string file(target.text());
    target.text();
    return file;
}

void checkGroupInfo(Hdf5Cursor& message) {
    message.expectBetween("the version", message.number(1), 0, 0);
    const std::uint64_t flags = message.number(1);
    message.skip(((flags & 1) != 0 ? 4 : 0) + ((flags & 2) != 0 ? 4 : 0));
}

void checkFreeSpace(Hdf5Cursor& message) {
    const std::uint64_t version = message.number(1);
    const std::uint64_t strategy = message.number(1);
    if (version == 0) {
        message.length();
        message.skip(strategy == 1 ? 6 * message.sizes().address : 0);
        return;
    }
    const bool isKept = message.number(1) != 0;
    message.skip(2 * message.sizes().length + 2 + message.sizes().address);
    message.skip(isKept ? 12 * message.sizes().address : 0);
}

} // namespace

Hdf5Space readHdf5Space(Hdf5Cursor& message) {
    enum Kind : std::uint64_t { SCALAR, SIMPLE, NONE };
    const std::uint64_t version = message.number(1);
    message.expectBetween("the version of a dataspace", version, 1, 2);
    const std::uint64_t rank = message.number(1);
    message.expectBetween("the dimensions of a dataspace", rank, 0, MOST_DIMENSIONS);
    const std::uint64_t flags = message.number(1);
    std::uint64_t kind = rank > 0 ? SIMPLE : SCALAR;
    if (version == 1) {
        message.skip(1 + 4);
    } else {
        kind = message.number(1);
        message.expectBetween("the class of a dataspace", kind, rank > 0 ? SIMPLE : SCALAR, rank > 0 ? SIMPLE : NONE);
    }
    Hdf5Space space;
    space.sizes = readLengths(message, rank);
    space.most = (flags & 1) != 0 ? readLengths(message, rank) : space.sizes;
    for (std::uint64_t d = 0; d < rank; ++d) {
        if (space.most[d] == unlimited(message)) {
            space.most[d] = HDF5_UNDEFINED;
        }
        message.expectBetween("a size of a dataspace", space.sizes[d], 0, space.most[d]);
    }
    space.count = kind == NONE ? 0 : productOf(space.sizes);
    message.expectBetween("the values of a dataspace", space.count, 0, MOST_BYTES);
    return space;
}

Hdf5Layout readHdf5Layout(Hdf5Cursor& message) {
    Hdf5Layout layout;
    layout.version = message.number(1);
    message.expectBetween("the version of a layout", layout.version, 1, 4);
    if (layout.version < 3) {
        readOldLayout(message, &layout);
        return layout;
    }
    layout.kind = message.number(1);
    message.expectBetween("the class of a layout", layout.kind, Hdf5Layout::COMPACT,
                          layout.version == 3 ? Hdf5Layout::CHUNKED : Hdf5Layout::VIRTUAL);
    if (layout.kind == Hdf5Layout::COMPACT) {
        layout.size = message.number(2);
        message.skip(layout.size);
    } else if (layout.kind == Hdf5Layout::CONTIGUOUS) {
        layout.address = message.address();
        layout.size = message.length();
    } else if (layout.kind == Hdf5Layout::VIRTUAL) {
        layout.address = message.address();
        layout.item = message.number(4);
    } else {
        layout.version == 3 ? readChunkedLayout(message, &layout) : readIndexedLayout(message, &layout);
    }
    return layout;
}

std::vector<Hdf5Filter> readHdf5Filters(Hdf5Cursor& message) {
    constexpr std::uint64_t MOST = 32;
    constexpr std::uint64_t FIRST_WITH_NAME = 256; // From the second version on.
    const std::uint64_t version = message.number(1);
    message.expectBetween("the version of filters", version, 1, 2);
    const std::uint64_t count = message.number(1);
    message.expectBetween("the number of filters", count, 0, MOST);
    message.skip(version == 1 ? 6 : 0);
    std::vector<Hdf5Filter> filters;
    for (std::uint64_t f = 0; f < count; ++f) {
        Hdf5Filter filter;
        filter.id = message.number(2);
        const std::uint64_t nameSize = version == 1 || filter.id >= FIRST_WITH_NAME ? message.number(2) : 0;
        message.skip(2);
        const std::uint64_t valueCount = message.number(2);
        if (nameSize > 0) {
            message.piece(nameSize, "the name of a filter").text();
        }
        for (std::uint64_t v = 0; v < valueCount; ++v) {
            filter.values.push_back(std::uint32_t(message.number(4)));
        }
        message.skip(version == 1 && valueCount % 2 == 1 ? 4 : 0);
        filters.push_back(std::move(filter));
    }
    return filters;
}

Hdf5Link readHdf5Link(Hdf5Cursor& message) {
    enum Flag : std::uint64_t { SIZE_MASK = 3, HAS_ORDER = 4, HAS_CLASS = 8, HAS_LETTERS = 16 };
    constexpr std::uint64_t FIRST_OWN_CLASS = Hdf5Link::EXTERNAL; // From there on anybody defines what they are.
    message.expectBetween("the version of a link", message.number(1), 1, 1);
    const std::uint64_t flags = message.number(1);
    Hdf5Link link;
    if ((flags & HAS_CLASS) != 0) {
        link.kind = message.number(1);
    }
    message.skip((flags & HAS_ORDER) != 0 ? 8 : 0);
    message.skip((flags & HAS_LETTERS) != 0 ? 1 : 0);
    link.name = message.bytes(message.number(std::size_t(1) << (flags & SIZE_MASK)));
    if (link.kind == Hdf5Link::HARD) {
        link.address = message.address();
        return link;
    }
    if (link.kind != Hdf5Link::SOFT) {
        message.expectBetween("the class of a link", link.kind, FIRST_OWN_CLASS, 255);
    }
    Hdf5Cursor target = message.piece(message.number(2), "the target of a link");
    if (link.kind == Hdf5Link::EXTERNAL) {
        link.file = readExternalFile(target);
    }
    return link;
}

Hdf5Dense readHdf5LinkInfo(Hdf5Cursor& message) {
    return readDense(message, 8);
}

Hdf5Dense readHdf5AttributeInfo(Hdf5Cursor& message) {
    return readDense(message, 2);
}

// Each of the three parts in front of the values fills eights of bytes in the first version.
Hdf5Attribute readHdf5Attribute(Hdf5Cursor& message, const Hdf5SharedType& shared) {
    enum Flag : std::uint64_t { TYPE_IS_SHARED = 1, SPACE_IS_SHARED = 2 };
    const std::uint64_t version = message.number(1);
    message.expectBetween("the version of an attribute", version, 1, 3);
    const std::uint64_t flags = version == 1 ? message.number(1) & 0 : message.number(1);
    message.expectBetween("the flags of an attribute", flags, 0, version == 2 ? 1 : 3);
    if ((flags & SPACE_IS_SHARED) != 0) {
        message.failAtLast("expected an attribute with a dataspace of its own, found it shared");
    }
    const std::uint64_t nameSize = message.number(2);
    const std::uint64_t typeSize = message.number(2);
    const std::uint64_t spaceSize = message.number(2);
    message.skip(version == 3 ? 1 : 0);
    const auto part = [&](std::uint64_t size, const char* what) {
        const Hdf5Cursor found = message.piece(size, what);
        message.skip(version == 1 ? (8 - size % 8) % 8 : 0);
        return found;
    };
    Hdf5Cursor name = part(nameSize, "the name of an attribute");
    name.text();
    name.expectBetween("the bytes behind the end", name.left(), 0, 0);
    Hdf5Cursor type = part(typeSize, "the type of an attribute");
    Hdf5Cursor space = part(spaceSize, "the dataspace of an attribute");
    Hdf5Attribute attribute{(flags & TYPE_IS_SHARED) != 0 ? shared(type) : readHdf5Type(type), readHdf5Space(space),
                            message};
    const std::uint64_t size = hdf5Product(attribute.space.count, attribute.type.size);
    attribute.values = message.piece(size, "an attribute");
    return attribute;
}

std::uint64_t readHdf5Fill(Hdf5Cursor& message) {
    enum Flag : std::uint64_t { IS_UNDEFINED = 16, HAS_VALUE = 32 };
    const std::uint64_t version = message.number(1);
    message.expectBetween("the version of a fill value", version, 1, 3);
    bool hasValue = false;
    if (version == 3) {
        const std::uint64_t flags = message.number(1);
        message.expectBetween("the time of filling", flags >> 2 & 3, 0, 2);
        hasValue = (flags & IS_UNDEFINED) == 0 && (flags & HAS_VALUE) != 0;
    } else {
        message.expectBetween("the time of taking room", message.number(1), 0, 3);
        message.expectBetween("the time of filling", message.number(1), 0, 2);
        hasValue = message.number(1) != 0;
    }
    return hasValue ? readHdf5OldFill(message) : 0;
}

std::uint64_t readHdf5OldFill(Hdf5Cursor& message) {
    constexpr std::uint64_t NONE = 0xffffffff;
    const std::uint64_t size = message.number(4);
    if (size == NONE) {
        return 0;
    }
    message.skip(size);
    return size;
}

std::uint64_t readHdf5Shared(Hdf5Cursor& message) {
    constexpr std::uint64_t IN_HEAP = 1;
    const std::uint64_t version = message.number(1);
    message.expectBetween("the version of a shared message", version, 1, 3);
    const std::uint64_t kind = message.number(1);
    if (version == 3 && kind == IN_HEAP) {
        message.failAtLast("expected a shared message to be in an object header, found it in a heap");
    }
    message.skip(version == 1 ? 6 + message.sizes().length : 0);
    return message.address();
}

void checkHdf5Message(std::uint64_t type, Hdf5Cursor& message) {
    constexpr std::uint64_t OLD_TIME_SIZE = 14;
    switch (type) {
    case HDF5_GROUP_INFO:
        checkGroupInfo(message);
        break;
    case HDF5_COMMENT:
        message.text();
        break;
    case HDF5_OLD_TIME:
        message.skip(OLD_TIME_SIZE);
        break;
    case HDF5_TIME:
        message.skip(1 + 3 + 4);
        break;
    case HDF5_SHARED_TABLE:
        message.fail("expected no messages that are shared in a heap, found a table of them");
    case HDF5_DRIVER:
        message.skip(1 + 8);
        message.skip(message.number(2));
        break;
    case HDF5_REFERENCES:
        message.skip(1 + 4);
        break;
    case HDF5_FREE_SPACE:
        checkFreeSpace(message);
        break;
    case HDF5_CACHE_IMAGE:
        message.fail("expected no image of HDF5's cache, found one");
    default: // Others are looked at elsewhere, or passed over by HDF5, too.
        break;
    }
}

} // namespace orv::imp::cae
