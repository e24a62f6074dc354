#pragma once

#include "OrvCore/PtrRef.h"
#include "OrvVisualization/View.h"
#include "Tools/Arguments.h"
#include "Tools/ExpressionResult.h"
#include "Tools/ResultFile.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvapp {

/// What is to be seen; texts as Arguments.h understands them.
struct PictureOptions {
    InputFiles file;
    std::string passwordFile;       ///< Empty when the file is not protected.
    std::string result;             ///< An expression for the colours; empty for those of the parts.
    std::string state;              ///< A name or a pattern; empty for all.
    std::vector<std::string> parts; ///< Names or patterns; empty for all, or beside a cut none.
    std::string deformation;        ///< Empty for the shape as it was.
    std::string cut;                ///< A plane; empty for none.
    std::string view = "iso";
    bool isParallel = false;
    bool hasLegend = true; ///< The camera leaves room for it.
    std::string size = "800x600";
};

/// A file's model, and a view that shows it as a picture does, for what draws the picture and what picks in it.
class Picture {
public:
    /// Opens the file and understands what is to be shown of it. Throws CommandError.
    explicit Picture(const PictureOptions& options);

    const ResultFile& file() const;
    orv::ug::UnstructGridModel& model() const;
    orv::vis::View& view() const;
    PictureSize size() const;

    /// Of the colours; not valid without.
    const orv::ug::ResultInfo& result() const;

    /// The states that were asked for and that have all that is to be shown, as indexes in the directory's list; at
    /// least one.
    const std::vector<std::size_t>& states() const;

    /// The one state of a picture of its own: the last one when none was asked for. Throws CommandError when several
    /// were.
    std::size_t onlyState() const;

    /// The name of a state.
    std::string stateName(std::size_t state) const;

    /// Makes a state the current one and loads what is shown of it. Throws CommandError with the reader's reason.
    void show(std::size_t state) const;

    /// Moves the camera so that all that is shown just fits. Throws CommandError when nothing is shown.
    void fit() const;

    /// Lets go of the values that show() brought.
    void drop() const;

private:
    void chooseResult(const std::string& expression);
    void chooseDeformation(const std::string& text);
    void chooseParts(const PictureOptions& options) const;
    void addCut(const std::string& plane) const;
    void chooseStates(const std::string& pattern);
    void placeCamera(const PictureOptions& options) const;

    PictureSize m_size;
    ResultFile m_file;
    orv::PtrRef<orv::vis::View> m_view;
    std::string m_statePattern;
    ExpressionResult m_built;
    orv::ug::ResultInfo m_result;
    orv::ug::ResultInfo m_deformation; ///< Not valid without.
    std::vector<std::size_t> m_states;
};

} // namespace orvapp
