#pragma once

#include "OrvImportCae/Hdf5Header.h"
#include "OrvImportCae/Hdf5Heaps.h"
#include "OrvImportCae/Hdf5Messages.h"

#include <cstdint>
#include <string>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace orv::imp::cae {

/// Goes from object to object of a file, by all their links.
class Hdf5Objects {
public:
    explicit Hdf5Objects(Hdf5Input& input);

    /// Looks at an object and at all that can be reached from it.
    void check(std::uint64_t root);

    /// The names of files that external links lead to, as they stand there.
    const std::vector<std::string>& files() const;

private:
    void checkObject(std::uint64_t address);
    void checkMessage(const Hdf5Message& message);
    void checkData(const Hdf5Header& header);
    void checkPlace(const Hdf5Layout& layout, std::uint64_t size, bool isExternal, const Hdf5Cursor& message);
    void checkChunkShape(const Hdf5Layout& layout, const Hdf5Space& space, std::uint64_t typeSize, bool isPacked,
                         const Hdf5Cursor& message) const;
    void checkVirtual(const Hdf5Layout& layout);
    void checkExternalFiles(Hdf5Cursor message);

    void checkSymbols(Hdf5Cursor message);
    void checkSymbolNode(std::uint64_t address, const Hdf5LocalHeap& heap);
    void checkLinks(const Hdf5Dense& dense);
    void checkLink(Hdf5Cursor message);
    void checkAttributes(const Hdf5Dense& dense);
    void checkAttribute(Hdf5Cursor message);
    void checkValue(const Hdf5Type& type, Hdf5Cursor& value);

    Hdf5Type typeOf(const Hdf5Message& message);
    Hdf5Type sharedType(Hdf5Cursor message);
    void visit(std::uint64_t address);

    Hdf5Input& m_input;
    Hdf5GlobalHeaps m_globalHeaps;
    std::vector<std::uint64_t> m_pending;
    std::unordered_set<std::uint64_t> m_seen;
    std::unordered_map<std::uint64_t, Hdf5Type> m_types; ///< Those that are objects of their own.
    std::vector<std::string> m_files;
    std::uint64_t m_listBytes = 0; ///< Of attributes. No two lists share any.
};

} // namespace orv::imp::cae
