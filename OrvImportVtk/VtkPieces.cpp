#include "OrvImportVtk/VtkPieces.h"

#include <vtkCompositeDataSet.h>
#include <vtkDataObjectTree.h>
#include <vtkDataObjectTreeIterator.h>
#include <vtkDataSet.h>
#include <vtkInformation.h>
#include <vtkSmartPointer.h>

namespace orv::imp::cae {
namespace {

void collect(vtkDataObject* object, const std::string& name, std::vector<VtkPiece>* pieces) {
    if (auto* data = vtkDataSet::SafeDownCast(object)) {
        pieces->push_back({name, data});
        return;
    }
    auto* tree = vtkDataObjectTree::SafeDownCast(object);
    if (!tree) {
        return;
    }
    vtkSmartPointer<vtkDataObjectTreeIterator> child;
    child.TakeReference(tree->NewTreeIterator());
    child->TraverseSubTreeOff();
    child->VisitOnlyLeavesOff();
    for (child->InitTraversal(); !child->IsDoneWithTraversal(); child->GoToNextItem()) {
        std::string path = name;
        if (child->HasCurrentMetaData() && child->GetCurrentMetaData()->Has(vtkCompositeDataSet::NAME())) {
            path +=
                (path.empty() ? "" : "/") + std::string(child->GetCurrentMetaData()->Get(vtkCompositeDataSet::NAME()));
        }
        collect(child->GetCurrentDataObject(), path, pieces);
    }
}

} // namespace

std::string VtkNames::makeUnique(const std::string& name) {
    const std::size_t times = ++m_times[name];
    return times == 1 ? name : name + " (" + std::to_string(times) + ")";
}

std::vector<VtkPiece> piecesOf(vtkDataObject* output) {
    std::vector<VtkPiece> pieces;
    collect(output, "", &pieces);
    VtkNames names;
    for (VtkPiece& piece : pieces) {
        piece.name = names.makeUnique(piece.name);
    }
    std::erase_if(pieces, [](const VtkPiece& piece) { return piece.data->GetNumberOfPoints() == 0; });
    return pieces;
}

} // namespace orv::imp::cae
