#pragma once

#include "OrvUnstructGrid/Error.h"
#include "OrvUnstructGrid/ResultType.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace orv::imp::cae {

/// A file that a case names, or one for each step.
struct EnSightFileName {
    std::string name;     ///< With the case's folder. Each "*" stands for a digit of a number.
    int timeSet = -1;     ///< That numbers the steps; -1 when the file is there once, for all of them.
    int fileSet = -1;     ///< That tells how many steps each file holds; -1 when it is one.
    std::size_t line = 0; ///< Of the case file, for texts.
};

/// Where something of one step is.
struct EnSightPlace {
    std::string filename;
    std::optional<std::size_t> step = {}; ///< Of the several that are in the file, from 0.
};

struct EnSightVariable {
    std::string name;
    ug::ResultMapping mapping;
    int componentCount;
    EnSightFileName file;
};

/// What a case file of EnSight Gold says.
class EnSightCase {
public:
    struct TimeSet {
        int number;
        std::size_t line;
        std::size_t stepCount = 0;
        std::optional<long> firstNumber = {};
        long increment = 1;
        std::vector<long> numbers = {}; ///< Of the files, when they are listed.
        std::vector<double> times = {};
    };

    struct FileSet {
        /// One of its files.
        struct File {
            std::optional<long> number;
            std::size_t stepCount;
        };
        int number;
        std::vector<File> files;
    };

    /// Reads the file and checks that everything is told that is needed to find the others. The text of an error does
    /// not begin with the file's name.
    bool read(const std::string& filename, ug::Error* error);

    /// All times at which there is a mesh or a variable, ascending. Empty when nothing depends on time.
    std::vector<double> times() const;

    /// Where the mesh of a time is: that of the last step which is not later, or else of the first one. `time` does not
    /// matter when there is one mesh.
    EnSightPlace meshPlace(double time) const;

    /// The same for one that is numbered, among the steps of its time set.
    EnSightPlace meshPlaceOfStep(std::size_t step) const;

    /// Where the values of a variable at exactly this time are; nowhere when it has none.
    std::optional<EnSightPlace> place(const EnSightVariable& variable, double time) const;

    bool hasOneMesh() const;

    std::vector<EnSightVariable> variables;
    std::vector<std::string> warnings; ///< Of what is passed over.
    EnSightFileName mesh;
    std::optional<std::size_t> meshStepOfElements = {}; ///< When meshes of other steps need have no elements.

private:
    friend class EnSightCaseParser;

    const TimeSet* findTimeSet(int number) const;
    const FileSet* findFileSet(int number) const;
    EnSightPlace placeOf(const EnSightFileName& file, std::size_t step) const;

    std::vector<TimeSet> m_timeSets;
    std::vector<FileSet> m_fileSets;
};

} // namespace orv::imp::cae
