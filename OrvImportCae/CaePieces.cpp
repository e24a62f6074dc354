#include "OrvImportCae/CaePieces.h"

#include "OrvUnstructGrid/DataResultGroup.h"

#include <algorithm>
#include <set>
#include <string>
#include <utility>

namespace orv::imp::cae {
namespace {

std::string nameWithoutFolder(const Str& filename) {
    const std::string name = filename.toStdString();
    return name.substr(name.find_last_of('/') + 1); // npos + 1 is 0.
}

} // namespace

PtrRef<ug::DataGeometry> CaePieces::Piece::geometry(std::size_t state) const {
    const bool hasStates = state < file.contents.states.size();
    return hasStates && file.contents.states[state].geometry ? file.contents.states[state].geometry
                                                             : file.contents.geometry;
}

int CaePieces::Piece::stateId(std::size_t state) const {
    return file.contents.states[state].info.id();
}

CaePieces::CaePieces(std::vector<CaeOpenFile> files) {
    for (CaeOpenFile& file : files) {
        m_pieces.push_back({std::move(file), 0, {}});
    }
    nameParts();
    for (Piece& piece : m_pieces) {
        addResults(&piece);
    }
}

void CaePieces::setProgress(ug::ProgressMeter* progress) {
    CaeReader::setProgress(progress);
    for (const Piece& piece : m_pieces) {
        piece.file.reader->setProgress(progress);
    }
}

bool CaePieces::open(const Str&, CaeContents* contents, ug::Error*) {
    const CaeContents& first = m_pieces[0].file.contents;
    contents->title = first.title;
    contents->parts = m_parts;
    contents->results = m_results;
    contents->stateGroups = first.stateGroups;
    contents->geometry = makeGeometry(0);
    for (std::size_t s = 0; s < first.states.size(); ++s) {
        m_statesById[first.states[s].info.id()] = s;
        CaeContents::State state{first.states[s].info, {}, makeGeometry(s)};
        for (std::size_t r = 0; r < m_results.size(); ++r) {
            if (std::ranges::any_of(m_pieces,
                                    [&](const Piece& p) { return findResult(p, m_results[r], s) != nullptr; })) {
                state.results.push_back(r);
            }
        }
        contents->states.push_back(std::move(state));
    }
    for (const Piece& piece : m_pieces) {
        const std::vector<Str>& warnings = piece.file.contents.warnings;
        contents->warnings.insert(contents->warnings.end(), warnings.begin(), warnings.end());
    }
    return true;
}

void CaePieces::adoptGeometry(const PtrRef<ug::DataGeometry>&) {}

void CaePieces::beginLoad(const std::vector<ug::ResultInfo>& infos, int stateId) {
    const std::size_t state = m_statesById.at(stateId);
    for (const Piece& piece : m_pieces) {
        std::vector<ug::ResultInfo> infosThere;
        for (const ug::ResultInfo& info : infos) {
            if (const ug::ResultInfo* own = findResult(piece, info, state)) {
                infosThere.push_back(*own);
            }
        }
        piece.file.reader->beginLoad(infosThere, piece.stateId(state));
    }
}

void CaePieces::endLoad() {
    for (const Piece& piece : m_pieces) {
        piece.file.reader->endLoad();
    }
}

bool CaePieces::readResult(const ug::ResultInfo& info, int stateId, const ug::ResultInfo& intoInfo,
                           ug::DataState* state, std::vector<Str>* warnings, ug::Error* error) {
    const std::size_t index = m_statesById.at(stateId);
    ug::DataResult* whole = state->results(state->geometry(0))->findOrAdd(intoInfo);
    for (std::size_t i = 0; i < m_pieces.size(); ++i) {
        const Piece& piece = m_pieces[i];
        const ug::ResultInfo* own = findResult(piece, info, index);
        if (!own) {
            continue;
        }
        const double count = double(m_pieces.size());
        const ug::ProgressMeter::Step step(progress(), double(i) / count, double(i + 1) / count);
        const PtrRef<ug::DataGeometry> geometry = piece.geometry(index);
        ug::DataState ownState(stateId, {geometry});
        if (!piece.file.reader->readResult(*own, piece.stateId(index), intoInfo, &ownState, warnings, error)) {
            return false;
        }
        ug::DataResult* read = ownState.results(geometry.get())->findOrAdd(intoInfo);
        for (std::size_t p = 0; p < geometry->partCount(); ++p) {
            whole->swapPart(piece.firstPart + p, read, p);
        }
    }
    return true;
}

bool CaePieces::readScalars(const ug::ResultInfo& info, int stateId, const ug::ScalarPlace& place,
                            std::span<double> values) {
    const std::size_t state = m_statesById.at(stateId);
    const Piece& piece = pieceOfPart(place.partIndex);
    const ug::ResultInfo* own = findResult(piece, info, state);
    if (!own) {
        std::ranges::fill(values, UNDEFINED_DOUBLE);
        return true;
    }
    return piece.file.reader->readScalars(*own, piece.stateId(state),
                                          {0, place.partIndex - piece.firstPart, place.firstItem}, values);
}

// A part that is alone in its file is called by it. Files of one name are told apart by their folders.
void CaePieces::nameParts() {
    std::set<std::string> names;
    for (const Piece& piece : m_pieces) {
        names.insert(nameWithoutFolder(piece.file.name));
    }
    const bool areNamesEnough = names.size() == m_pieces.size();
    for (Piece& piece : m_pieces) {
        piece.firstPart = m_parts.size();
        const Str fileName = areNamesEnough ? Str(nameWithoutFolder(piece.file.name)) : piece.file.name;
        const std::vector<ug::PartInfo>& own = piece.file.contents.parts;
        for (const ug::PartInfo& part : own) {
            m_parts.emplace_back(int(m_parts.size()) + 1, own.size() == 1 ? fileName : fileName + ": " + part.name());
        }
    }
}

// Results of the same name, type and mapping are one.
void CaePieces::addResults(Piece* piece) {
    for (const ug::ResultInfo& own : piece->file.contents.results) {
        int largestId = 0;
        std::size_t index = 0;
        for (; index < m_results.size(); ++index) {
            const ug::ResultInfo& known = m_results[index];
            if (known.type() == own.type() && known.name() == own.name() &&
                known.resultMapping() == own.resultMapping()) {
                break;
            }
            largestId = known.type() == own.type() ? std::max(largestId, known.id()) : largestId;
        }
        piece->results.push_back(index);
        if (index == m_results.size()) {
            m_results.emplace_back(own.type(), largestId + 1, own.name(), own.resultMapping());
        }
    }
}

// States whose pieces have the same meshes share one.
PtrRef<ug::DataGeometry> CaePieces::makeGeometry(std::size_t state) {
    std::vector<ug::DataGeometry*> own;
    for (const Piece& piece : m_pieces) {
        own.push_back(piece.geometry(state).get());
    }
    PtrRef<ug::DataGeometry>& whole = m_geometries[own];
    if (!whole) {
        whole = new ug::DataGeometry;
        for (const ug::DataGeometry* geometry : own) {
            whole->addPartsOf(*geometry);
        }
    }
    return whole;
}

/// What the file calls a result that it has in a state; null when it does not have it there.
const ug::ResultInfo* CaePieces::findResult(const Piece& piece, const ug::ResultInfo& info, std::size_t state) const {
    const std::size_t index = std::size_t(std::ranges::find(m_results, info) - m_results.begin());
    for (const std::size_t own : piece.file.contents.states[state].results) {
        if (piece.results[own] == index) {
            return &piece.file.contents.results[own];
        }
    }
    return nullptr;
}

const CaePieces::Piece& CaePieces::pieceOfPart(std::size_t part) const {
    const auto next = std::ranges::upper_bound(m_pieces, part, {}, &Piece::firstPart);
    return *(next - 1);
}

} // namespace orv::imp::cae
