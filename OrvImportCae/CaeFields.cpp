#include "OrvImportCae/CaeFields.h"

#include "OrvCore/Str.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <string_view>

namespace orv::imp::cae {
namespace {

constexpr const char* DISPLACEMENT_NAMES[] = {"disp", "displ", "displacement", "displacements", "depl",
                                              "dis",  "u",     "deformation"};

/// A number for each item, which may become a result of its own or part of one.
struct Scalar {
    std::string name;
    const CaeArray* array;
    CaeComponent component;
    bool isTaken = false;
};

using Endings = std::vector<std::vector<std::string>>; ///< For each component of the result those that stand for it.

const Endings TENSOR_ENDINGS[] = {
    {{"xx"}, {"yy"}, {"zz"}, {"xy", "yx"}, {"yz", "zy"}, {"zx", "xz"}},
    {{"XX"}, {"YY"}, {"ZZ"}, {"XY", "YX"}, {"YZ", "ZY"}, {"ZX", "XZ"}},
    {{"11"}, {"22"}, {"33"}, {"12", "21"}, {"23", "32"}, {"31", "13"}},
};
const Endings VECTOR_ENDINGS[] = {
    {{"x"}, {"y"}, {"z"}},
    {{"X"}, {"Y"}, {"Z"}},
};

std::string bareName(std::string name) {
    name.erase(name.find_last_not_of("_-.: ") + 1);
    return name;
}

bool isSameKind(const Scalar& a, const Scalar& b) {
    return a.array->mapping == b.array->mapping && a.array->steps == b.array->steps;
}

Scalar* findFree(std::vector<Scalar>* scalars, const Scalar& like, const std::string& name) {
    const auto found = std::find_if(scalars->begin(), scalars->end(), [&](const Scalar& scalar) {
        return !scalar.isTaken && scalar.name == name && isSameKind(scalar, like) &&
               scalar.array->type == ug::NO_RESULT_TYPE;
    });
    return found == scalars->end() ? nullptr : &*found;
}

// The scalars of one result, when `first` is one of them and all are there; empty otherwise.
std::vector<Scalar*> findGroup(std::vector<Scalar>* scalars, const Scalar& first, const Endings& endings,
                               std::string* name) {
    std::string stem;
    for (const std::vector<std::string>& alternatives : endings) {
        for (const std::string& ending : alternatives) {
            if (first.name.size() > ending.size() && first.name.ends_with(ending)) {
                stem = first.name.substr(0, first.name.size() - ending.size());
            }
        }
    }
    *name = bareName(stem);
    std::vector<Scalar*> group;
    for (const std::vector<std::string>& alternatives : endings) {
        for (const std::string& ending : alternatives) {
            if (Scalar* scalar = findFree(scalars, first, stem + ending); scalar && !name->empty()) {
                group.push_back(scalar);
                break;
            }
        }
    }
    return group.size() == endings.size() ? group : std::vector<Scalar*>();
}

/// Goes through arrays and makes their results.
class Maker {
public:
    Maker(const std::vector<CaeArray>& arrays, std::vector<std::string>* warnings)
        : m_arrays(arrays), m_warnings(warnings) {
        for (std::size_t a = 0; a < arrays.size(); ++a) {
            listScalars(a);
        }
        for (const Endings& endings : TENSOR_ENDINGS) {
            gather(endings, ug::SYMMETRIC_TENSOR);
        }
        for (const Endings& endings : VECTOR_ENDINGS) {
            gather(endings, ug::VECTOR);
        }
    }

    // In the order of the arrays, those that were put together where their first one is.
    std::vector<CaeField> run() {
        for (std::size_t a = 0; a < m_arrays.size(); ++a) {
            if (!m_arrays[a].componentNames.empty() || m_arrays[a].componentCount == 1) {
                addScalarsOf(a);
            } else {
                addArray(a);
            }
        }
        return std::move(m_fields);
    }

private:
    struct Gathered {
        CaeField field;
        const CaeArray* firstArray;
    };

    void listScalars(std::size_t a) {
        const CaeArray& array = m_arrays[a];
        if (array.componentNames.empty() && array.componentCount == 1) {
            m_scalars.push_back({array.name, &array, {a, 0}});
        }
        for (std::size_t c = 0; c < array.componentNames.size(); ++c) {
            m_scalars.push_back({array.componentNames[c], &array, {a, std::uint8_t(c)}});
        }
    }

    void gather(const Endings& endings, ug::ResultType type) {
        for (const Scalar& first : m_scalars) {
            std::string name;
            const std::vector<Scalar*> group =
                first.isTaken ? std::vector<Scalar*>() : findGroup(&m_scalars, first, endings, &name);
            if (group.empty()) {
                continue;
            }
            const bool isDisplacement = type == ug::VECTOR && isDisplacementName(name);
            CaeField field{name, first.array->mapping, isDisplacement ? ug::DISPLACEMENT : type, {}};
            for (Scalar* scalar : group) {
                scalar->isTaken = true;
                field.components.push_back(scalar->component);
            }
            m_gathered.push_back({std::move(field), first.array});
        }
    }

    void addScalarsOf(std::size_t a) {
        for (Gathered& gathered : m_gathered) {
            if (gathered.firstArray == &m_arrays[a]) {
                m_fields.push_back(gathered.field);
            }
        }
        for (const Scalar& scalar : m_scalars) {
            if (scalar.component.array == a && !scalar.isTaken) {
                m_fields.push_back({scalar.name, m_arrays[a].mapping, ug::SCALAR, {scalar.component}});
            }
        }
    }

    void addArray(std::size_t a) {
        const CaeArray& array = m_arrays[a];
        const ug::ResultType type =
            array.type == ug::NO_RESULT_TYPE ? resultTypeOf(array.componentCount, array.name) : array.type;
        if (type == ug::NO_RESULT_TYPE) {
            m_warnings->push_back("array '" + array.name + "' is left out: " +
                                  (array.componentCount == 0
                                       ? std::string("it holds no numbers")
                                       : "it has " + std::to_string(array.componentCount) + " components"));
            return;
        }
        const CaeOrder order = array.componentCount == 9   ? FULL_TENSOR_ORDER
                               : array.componentCount == 6 ? array.symmetricOrder
                                                           : SAME_ORDER;
        CaeField field{array.name, array.mapping, type, {}};
        for (std::size_t c = 0; c < (type == ug::SYMMETRIC_TENSOR ? 6 : 3); ++c) {
            field.components.push_back({a, order[c]});
        }
        m_fields.push_back(std::move(field));
    }

    const std::vector<CaeArray>& m_arrays;
    std::vector<std::string>* m_warnings;
    std::vector<Scalar> m_scalars;
    std::vector<Gathered> m_gathered;
    std::vector<CaeField> m_fields;
};

} // namespace

ug::ResultType resultTypeOf(int componentCount, const std::string& name) {
    switch (componentCount) {
    case 1:
        return ug::SCALAR;
    case 3:
        return isDisplacementName(name) ? ug::DISPLACEMENT : ug::VECTOR;
    case 6:
    case 9:
        return ug::SYMMETRIC_TENSOR;
    default:
        return ug::NO_RESULT_TYPE;
    }
}

bool isDisplacementName(const std::string& name) {
    std::string bare = Str(name.substr(name.find_last_of("/.") + 1)).toLower().toStdString(); // npos + 1 is 0.
    bare.erase(bare.find_last_not_of('_') + 1);
    return std::find(std::begin(DISPLACEMENT_NAMES), std::end(DISPLACEMENT_NAMES), bare) !=
           std::end(DISPLACEMENT_NAMES);
}

std::vector<CaeField> makeCaeFields(const std::vector<CaeArray>& arrays, std::vector<std::string>* warnings) {
    return Maker(arrays, warnings).run();
}

} // namespace orv::imp::cae
