#pragma once

#include "OrvImportVtk/VtkSource.h"

namespace pugi {
class xml_node;
}

namespace orv::imp::cae {

class VtkNames;

/// Files that name others: collections of ParaView, .pvd, with a time, a part and a file each, trees of blocks, .vtm,
/// whose leaves are files, and pieces of one mesh, .pvtu, .pvtp, .pvts, .pvtr and .pvti, which become parts. The files
/// are VTK's XML files, each opened by itself, also collections.
class CollectionSource : public VtkSource {
public:
    /// @param depth how many collections this one is within
    explicit CollectionSource(int depth = 0);

    void setProgress(ug::ProgressMeter* progress) override;
    bool open(const std::string& filename, VtkContents* contents, ug::Error* error) override;
    vtkSmartPointer<vtkDataObject> read(std::size_t step, std::span<const std::size_t> arrays,
                                        ug::Error* error) override;
    void release() override;

private:
    /// One of the files.
    struct Member {
        std::size_t step;
        std::string name; ///< Of its part, or what the names of its parts begin with.
        std::string filename;
        std::unique_ptr<VtkSource> source;
        std::vector<std::size_t> arrays; ///< For each of its arrays the collection's.
    };

    bool listEntries(const pugi::xml_node& root, VtkContents* contents, ug::Error* error);
    void listBlocks(const pugi::xml_node& node, const std::string& name);
    bool openMember(Member* member, VtkNames* names, VtkContents* contents, ug::Error* error);
    void addArrays(const std::vector<CaeArray>& arrays, Member* member, VtkContents* contents);
    static void dropWholeSteps(VtkContents* contents);

    int m_depth;
    std::string m_folder;
    std::vector<Member> m_members;
};

} // namespace orv::imp::cae
