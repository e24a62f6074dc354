#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvUnstructGrid/DataPart.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace orv::ug {

/// A mesh: a list of parts. States whose mesh is the same share one geometry.
class ORV_API DataGeometry : public RefCountedObject {
public:
    /// Takes the next id of the process, so a geometry that replaces another one is told apart from it.
    DataGeometry();
    ~DataGeometry() override;

    int id() const;

    std::size_t partCount() const;
    /// Asserts "index < partCount()"; null behind a failed assertion.
    DataPart* part(std::size_t index);
    const DataPart* part(std::size_t index) const;

    /// Appends an empty part. The geometry owns it. Add parts before a state takes the geometry in.
    DataPart* addPart(int partId);

    /// Appends the parts of another geometry, which both have from then on: what is read of them by way of one is there
    /// in the other. Their ids, in both, go on from here: partCount() + 1 and so on.
    void addPartsOf(const DataGeometry& other);

    /// Has every part read that its source has left unread. False with a text when one cannot be.
    bool read(Error* error) const;

    /// The bytes of all nodes and elements that are there.
    std::size_t byteCount() const;

    /// Gives back the memory of the parts that can be read again, see DataPart::giveBack(). Those that another geometry
    /// has, too, stay, and all do while somebody keeps them.
    void giveBack();

    /// The bytes that this would give back.
    std::size_t bytesToGiveBack() const;

    /// As long as what comes back lives, giveBack() does nothing.
    std::shared_ptr<const void> keep() const;

private:
    int m_id;
    std::vector<std::shared_ptr<DataPart>> m_parts;
    std::shared_ptr<const int> m_keeper; ///< Everybody who keeps the parts has it, too.
};

} // namespace orv::ug
