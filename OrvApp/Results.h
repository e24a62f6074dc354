#pragma once

#include "LibCore/rvfExport.h"
#include "OrvCore/PimplPointerHolder.h"
#include "OrvCore/RefCountedObject.h"
#include "OrvCore/Str.h"
#include "OrvUnstructGrid/DataResult.h"
#include "OrvUnstructGrid/ResultInfo.h"

namespace orv::app {

class ResultsPrivate;

/// The results that the current model has in its current state, and their values.
///
/// Nothing is kept here: each question is answered from the directory of the current model's data source, so the
/// answers follow the current model and state by themselves. With a current state only the results that have values in
/// it are listed, so the same index may name another result in another state; without one all of the directory is.
///
/// An index over all types runs through the scalars, then the vectors, then the symmetric tensors, then the
/// displacements, within a type in the directory's order; for 2 scalars, 1 vector, 1 tensor and 1 displacement the
/// displacement is number 4. An index of one type counts that type alone. Each look-up gathers its list anew, and one
/// by index gathers it twice.
///
/// Without a current model with a data source there is nothing to list: all operations that count, find or name a
/// result assert "directory != __null" then, and have no defined answer behind the failed assertion. Those that give
/// values for a ResultInfo give null without an assertion.
///
/// One thread at a time.
class ORV_API Results : public RefCountedObject {
public:
    /// Made at the first call, gone at process exit.
    static Results* instance();

    unsigned long count() const;
    unsigned long scalarCount() const;
    unsigned long vectorCount() const;
    unsigned long displacementCount() const;
    unsigned long tensorCount() const;

    /// The position among the results of all types; UNDEFINED_SIZE_T for a result that is not in the current state.
    unsigned long indexOf(ug::ResultInfo info) const;

    /// @name The position among the results of one type
    /// UNDEFINED_SIZE_T for a result that is not in the current state. Asserts that the info is of that type, such as
    /// "info.type() == SCALAR"; behind the failed assertion the position among the results of the info's own type.
    /// @{
    unsigned long scalarIndexOf(ug::ResultInfo info) const;
    unsigned long vectorIndexOf(ug::ResultInfo info) const;
    unsigned long displacementIndexOf(ug::ResultInfo info) const;
    unsigned long tensorIndexOf(ug::ResultInfo info) const;
    /// @}

    /// @name Look-up by index or by name, among all types or one
    /// By index: asserts that the index is below the count, such as "index < scalarCount()"; no defined answer behind a
    /// failed assertion.
    ///
    /// By name: the one result whose name matches, see Str::matches(). The name is always a pattern: there is no exact
    /// comparison first, so a name that as a pattern matches another result's name too is a double match. An invalid
    /// info
    /// - without a word when the list is empty;
    /// - with the assertion "foundInfo.isValid()", whose message names the pattern, when nothing matches;
    /// - with the assertion "foundCount < 2" when several match.
    /// @{
    ug::ResultInfo resultInfo(unsigned long index) const;
    ug::ResultInfo resultInfo(const Str& name) const;
    ug::ResultInfo scalarInfo(unsigned long index) const;
    ug::ResultInfo scalarInfo(const Str& name) const;
    ug::ResultInfo vectorInfo(unsigned long index) const;
    ug::ResultInfo vectorInfo(const Str& name) const;
    ug::ResultInfo displacementInfo(unsigned long index) const;
    ug::ResultInfo displacementInfo(const Str& name) const;
    ug::ResultInfo tensorInfo(unsigned long index) const;
    ug::ResultInfo tensorInfo(const Str& name) const;
    /// @}

    /// @name Values
    /// currentDataResult...: one result in the current state on all parts of the geometry that holds the current part.
    /// currentDataPart...: its values on the current part.
    ///
    /// A result that is not loaded yet is loaded; once loaded it stays in the state until its data source drops it. The
    /// pointers are borrowed: a later change of state or load may end what they point to, so ask anew.
    ///
    /// Null when no state or no part is current (a part is needed for the whole result too), when the result has no
    /// values in the state, when loading fails, whose reason is not told, and when a name finds no result.
    ///
    /// A name is a pattern as in resultInfo(), among all types: a name that finds a result of another kind is a wrong
    /// kind. A wrong kind is asserted more than once, with different words; behind the failed assertions the search
    /// goes on by the info's id among the results of the kind that was asked for.
    /// @{
    ug::DataResultScalar* currentDataResultScalar(ug::ResultInfo scalar);
    ug::DataResultScalar* currentDataResultScalar(const Str& name);
    ug::DataPartScalar* currentDataPartScalar(ug::ResultInfo scalar);
    ug::DataPartScalar* currentDataPartScalar(const Str& name);
    ug::DataResultVector* currentDataResultVector(ug::ResultInfo vector);
    ug::DataResultVector* currentDataResultVector(const Str& name);
    ug::DataPartVector* currentDataPartVector(ug::ResultInfo vector);
    ug::DataPartVector* currentDataPartVector(const Str& name);
    ug::DataResultSymmetricTensor* currentDataResultTensor(ug::ResultInfo tensor);
    ug::DataResultSymmetricTensor* currentDataResultTensor(const Str& name);
    ug::DataPartSymmetricTensor* currentDataPartTensor(ug::ResultInfo tensor);
    ug::DataPartSymmetricTensor* currentDataPartTensor(const Str& name);
    ug::DataResultDisplacement* currentDataResultDisplacement(ug::ResultInfo displacement);
    ug::DataResultDisplacement* currentDataResultDisplacement(const Str& name);
    ug::DataPartDisplacement* currentDataPartDisplacement(ug::ResultInfo displacement);
    ug::DataPartDisplacement* currentDataPartDisplacement(const Str& name);
    /// @}

    /// @name Custom results
    /// An operator (OrvApp/ResultOperators.h) only describes a result. Added to the directory of the current model's
    /// data source it is one of the model's results: counted, listed, found by name and loaded when asked for. It stays
    /// with that source, so it drops out of sight with the model and comes back with it.
    ///
    /// Without a current model with a data source nothing happens, without a word. Execution goes on behind each failed
    /// assertion.
    /// @{

    /// Adds a result under a name; under the one that it has when `name` is empty, such as "a+b". The name reaches the
    /// directory's record only: the caller's info and its copies keep theirs. Adding a result again renames it.
    ///
    /// Asserts "info.isCustom()", twice over; a result that is not is not added.
    void add(ug::ResultInfo info, const Str& name);

    /// Adds a result under its own name. Asserts "info.isCustom()", and for each result that it rests on, in the order
    /// of the arguments, that the directory has it, "testInfo.isValid()", and by the same name, "testInfo.name() ==
    /// baseArgs[i].name()": ids mean nothing in another data source, so it is the name that gives a result of another
    /// model away, and one that has changed it. Behind a failed assertion about what it rests on the result is added
    /// all the same, and fails to load or computes from the namesake by id.
    void add(ug::ResultInfo info);

    /// Takes a custom result out of the directory, with its values in all states, and with it everything that was
    /// computed from it, however far removed, and every result that names it as its base. Each goes together with its
    /// own dependants before the next, scalars first, then vectors, displacements and symmetric tensors, in the
    /// directory's order. Nothing that shows a removed result elsewhere is told.
    ///
    /// Asserts "info.isCustom()", then that the result is in the directory, "testInfo.isValid()". Behind the failed
    /// assertion its dependants are removed all the same: what is computed from a result of the file goes when that
    /// result is passed here, the file's result itself stays. The second assertion fails too, harmlessly, where paths
    /// meet: with a = x + 1 and e = x + a, removing x removes a, with it e, and then finds e gone.
    void remove(ug::ResultInfo info);

    /// Removes every custom result; those of the file stay. A result that went together with one in front of it in the
    /// directory fails the assertion "testInfo.isValid()" of remove(), harmlessly.
    void removeAll();
    /// @}

private:
    Results();
    ~Results() override;

    internal::PimplPointerHolder<ResultsPrivate> m_private;
};

} // namespace orv::app
