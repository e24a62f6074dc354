#pragma once

#include "OrvImportCae/CaeReader.h"
#include "OrvImportVtk/VtkMesh.h"
#include "OrvImportVtk/VtkSource.h"

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <vector>

class vtkDataSet;

namespace orv::imp::cae {

/// Reads through VTK: makes parts, states and results of what a VtkSource gives. What a load asks for comes from the
/// file in one go, with the mesh if that has not been read yet, and VTK keeps nothing of it afterwards.
class VtkReader : public CaeReader {
public:
    explicit VtkReader(std::unique_ptr<VtkSource> source);
    ~VtkReader() override;

    void setProgress(ug::ProgressMeter* progress) override;
    bool open(const Str& filename, CaeContents* contents, ug::Error* error) override;
    void adoptGeometry(const PtrRef<ug::DataGeometry>& geometry) override;
    void beginLoad(const std::vector<ug::ResultInfo>& infos, int stateId) override;
    bool readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo, ug::DataState* state,
                    std::vector<Str>* warnings, ug::Error* error) override;
    void endLoad() override;
    bool readScalars(const ug::ResultInfo& info, int stateId, const ug::ScalarPlace& place,
                     std::span<double> values) override;

    /// Gives up all objects of VTK; nothing can be read any more.
    void letGo();

private:
    /// The mesh of one step, or of all.
    struct Mesh {
        std::size_t step; ///< The first that has it.
        PtrRef<ug::DataGeometry> geometry;
        std::vector<VtkPartMap> maps;               ///< One for each part, once that has been read.
        std::set<std::pair<std::size_t, int>> told; ///< Parts and their types of cells that are left out.
    };

    bool findParts(ug::Error* error);
    void makeMeshes(CaeContents* contents);
    void describeResults(CaeContents* contents);
    void describeSteps(CaeContents* contents) const;

    bool readPart(std::size_t mesh, std::size_t part, ug::DataNodes* nodes, ug::DataElements* elements,
                  ug::Error* error);
    bool fillPart(std::size_t mesh, std::size_t part, ug::DataNodes* nodes, ug::DataElements* elements,
                  ug::Error* error);
    bool fetchMesh(std::size_t step, ug::Error* error);
    bool fetch(std::size_t step, std::span<const std::size_t> arrays, ug::Error* error);
    void drop();
    bool copyField(const CaeField& field, const VtkPartMap& map, vtkDataSet* piece, ug::DataPartValues* values,
                   ug::Error* error);
    void tellAsymmetry(const CaeField& field, vtkDataSet* piece);
    const Mesh& meshOf(std::size_t step) const;
    const CaeField& findField(const ug::ResultInfo& info) const;

    std::string m_filename;
    std::unique_ptr<VtkSource> m_source;
    VtkContents m_contents;
    std::vector<std::string> m_partNames; ///< As VTK's pieces are called.
    std::vector<CaeField> m_fields;
    std::vector<ug::ResultInfo> m_results; ///< Of the fields.
    std::vector<Mesh> m_meshes;            ///< One, or one for each step.
    std::shared_ptr<VtkReader*> m_self;    ///< For parts that live longer; null then.

    bool m_isLoading = false;
    std::size_t m_loadStep = 0;
    std::set<std::size_t> m_loadArrays;

    /// What the source read last, until the load is over.
    struct Output {
        vtkSmartPointer<vtkDataObject> object; ///< Null when there is none.
        std::size_t step = 0;
        std::set<std::size_t> arrays;
        std::vector<vtkDataSet*> pieces; ///< For each part its piece; null when it has none.
    };
    Output m_output;

    std::vector<Str> m_lateWarnings; ///< Of what turned up after opening; told with the next result.
    std::set<std::string> m_told;
};

} // namespace orv::imp::cae
