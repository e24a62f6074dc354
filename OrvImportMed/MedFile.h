#pragma once

#include "OrvUnstructGrid/Error.h"

#include <med.h>

#include <cstdint>
#include <cstdio>
#include <ctime>
#include <optional>
#include <string>
#include <type_traits>
#include <vector>

namespace orv::imp::cae {

/// Keeps off the console, while it lives, what libmedc prints: it tells each failure on `stderr`, and cannot be told
/// not to. What the whole process writes to that stream of C meanwhile is lost, what it writes to std::cerr is not.
/// HDF5 tells errors no more from then on, which is libmedc's doing, not even those that it finds when the process
/// ends.
class MedSilence {
public:
    MedSilence();
    ~MedSilence();

    MedSilence(const MedSilence&) = delete;
    MedSilence& operator=(const MedSilence&) = delete;

private:
    std::FILE* m_nowhere;
    std::FILE* m_stderr;
};

/// A name that libmedc fills: `count` texts of `length` characters one after the other, and room for the end.
class MedText {
public:
    explicit MedText(std::size_t length, std::size_t count = 1);

    operator char*() {
        return m_characters.data();
    }

    /// One of the texts, without the blanks and zeros at its end.
    std::string text(std::size_t index = 0) const;

private:
    std::size_t m_length;
    std::vector<char> m_characters;
};

/// One of libmedc's enumerations as the file has it: any number.
template <class Enum>
class MedChoice {
public:
    operator Enum*() {
        return reinterpret_cast<Enum*>(&m_number);
    }

    int number() const {
        return int(m_number);
    }

    bool operator==(Enum value) const {
        return m_number == static_cast<std::underlying_type_t<Enum>>(value);
    }

private:
    std::underlying_type_t<Enum> m_number = 0;
};

/// An open MED file of version 3 or later. The functions of libmedc and HDF5 take id().
///
/// libmedc trusts what files say of themselves: it writes all of a data set into the caller's memory, however much the
/// caller made room for. So every count goes through fits() before memory is taken for it, and every data set that
/// libmedc reads as a whole through hasExtent() or extent().
class MedFile {
public:
    MedFile() = default;
    ~MedFile();

    MedFile(const MedFile&) = delete;
    MedFile& operator=(const MedFile&) = delete;

    bool open(const std::string& filename, ug::Error* error);

    med_idt id() const {
        return m_id;
    }

    const std::string& name() const {
        return m_name;
    }

    /// False, with a text, when the file is not any more what was opened.
    bool checkUnchanged(ug::Error* error) const;

    /// Whether the file can hold so many things of that size. A negative count never fits: it is how libmedc fails.
    bool fits(std::int64_t count, std::size_t bytesEach) const;

    /// What is in the group at that path; nothing when there is none.
    std::vector<std::string> names(const std::string& path) const;

    /// How many values the data set at that path has; nothing when there is none.
    std::optional<std::size_t> extent(const std::string& path) const;

    /// Whether it has just so many.
    bool hasExtent(const std::string& path, std::size_t count) const;

    /// "FILE: OBJECT: WHAT"; always false.
    bool fail(ug::Error* error, const std::string& object, const std::string& what) const;

private:
    std::string m_name;
    med_idt m_id = -1;
    std::uint64_t m_size = 0;
    std::timespec m_changed = {};
};

/// The group of a computation step within that of a mesh or field: both numbers, 20 digits each.
std::string medStepPath(med_int number, med_int iteration);

} // namespace orv::imp::cae
