#include "OrvUnstructGrid/DataResultGroup.h"
#include "Tests/OrvImportVtk/VtkSamples.h"

#include <gtest/gtest.h>
#include <vtk_netcdf.h>

#include <algorithm>
#include <functional>

using namespace orv;

namespace {

struct Variable {
    std::string name;
    nc_type type;
    std::vector<std::string> dimensions;
    std::vector<double> numbers;
    std::string text = {}; ///< Of the attribute "elem_type", or the characters.
};

/// A quadrilateral "plate" and two triangles "rib" on six nodes, with a variable of nodes and one of the plate, at two
/// times.
struct Model {
    std::vector<std::pair<std::string, std::size_t>> dimensions = {{"time_step", NC_UNLIMITED},
                                                                   {"num_dim", 2},
                                                                   {"num_nodes", 6},
                                                                   {"num_elem", 3},
                                                                   {"num_el_blk", 2},
                                                                   {"num_el_in_blk1", 1},
                                                                   {"num_nod_per_el1", 4},
                                                                   {"num_el_in_blk2", 2},
                                                                   {"num_nod_per_el2", 3},
                                                                   {"num_nod_var", 1},
                                                                   {"num_elem_var", 1},
                                                                   {"len_string", 6},
                                                                   {"two", 2},
                                                                   {"five", 5}};
    std::vector<Variable> variables = {
        {"eb_prop1", NC_INT, {"num_el_blk"}, {1, 2}},
        {"eb_names", NC_CHAR, {"num_el_blk", "len_string"}, {}, "plate rib   "},
        {"coordx", NC_DOUBLE, {"num_nodes"}, {0, 1, 1, 0, 2, 2}},
        {"coordy", NC_DOUBLE, {"num_nodes"}, {0, 0, 1, 1, 0, 1}},
        {"connect1", NC_INT, {"num_el_in_blk1", "num_nod_per_el1"}, {1, 2, 3, 4}, "QUAD"},
        {"connect2", NC_INT, {"num_el_in_blk2", "num_nod_per_el2"}, {2, 5, 6, 2, 6, 3}, "TRI"},
        {"name_nod_var", NC_CHAR, {"num_nod_var", "len_string"}, {}, " T    "},
        {"name_elem_var", NC_CHAR, {"num_elem_var", "len_string"}, {}, "Damage"},
        {"time_whole", NC_DOUBLE, {"time_step"}, {0.5, 1.5}},
        {"vals_nod_var1", NC_FLOAT, {"time_step", "num_nodes"}, {1, 2, 3, 4, 5, 6, 11, 12, 13, 14, 15, 16}},
        {"vals_elem_var1eb1", NC_DOUBLE, {"time_step", "num_el_in_blk1"}, {7, 8}},
    };

    Variable& operator[](const std::string& name) {
        return *std::find_if(variables.begin(), variables.end(), [&](const Variable& v) { return v.name == name; });
    }

    void remove(const std::string& name) {
        std::erase_if(variables, [&](const Variable& v) { return v.name == name; });
    }

    void resize(const std::string& name, std::size_t length) {
        std::find_if(dimensions.begin(), dimensions.end(), [&](const auto& d) { return d.first == name; })->second =
            length;
    }

    void write(const std::string& path, int format) const {
        int file = 0;
        ASSERT_EQ(nc_create(path.c_str(), NC_CLOBBER | format, &file), NC_NOERR);
        for (const auto& [name, length] : dimensions) {
            int id = 0;
            nc_def_dim(file, name.c_str(), length, &id);
        }
        std::vector<int> ids;
        for (const Variable& variable : variables) {
            std::vector<int> places;
            for (const std::string& dimension : variable.dimensions) {
                places.push_back(-1);
                nc_inq_dimid(file, dimension.c_str(), &places.back());
            }
            ids.push_back(-1);
            nc_def_var(file, variable.name.c_str(), variable.type, int(places.size()), places.data(), &ids.back());
            if (variable.type != NC_CHAR && !variable.text.empty()) {
                nc_put_att_text(file, ids.back(), "elem_type", variable.text.size(), variable.text.data());
            }
        }
        nc_enddef(file);
        for (std::size_t v = 0; v < ids.size(); ++v) {
            put(file, ids[v], variables[v]);
        }
        ASSERT_EQ(nc_close(file), NC_NOERR);
    }

private:
    void put(int file, int id, const Variable& variable) const {
        std::vector<std::size_t> counts;
        std::size_t others = 1;
        for (const std::string& name : variable.dimensions) {
            counts.push_back(std::find_if(dimensions.begin(), dimensions.end(), [&](const auto& dimension) {
                                 return dimension.first == name;
                             })->second);
            others *= std::max<std::size_t>(counts.back(), 1);
        }
        const std::vector<std::size_t> start(counts.size(), 0);
        if (variable.type == NC_CHAR) {
            nc_put_vara_text(file, id, start.data(), counts.data(), variable.text.data());
            return;
        }
        if (counts[0] == NC_UNLIMITED) {
            counts[0] = variable.numbers.size() / others;
        }
        nc_put_vara_double(file, id, start.data(), counts.data(), variable.numbers.data());
    }
};

using Change = std::function<void(Model&)>;

class ExodusFile : public testing::TestWithParam<int> {
protected:
    PtrRef<imp::cae::DataSourceCae> open(const Change& change, ug::Error* error = nullptr) {
        Model model;
        change(model);
        m_path = m_folder.path() + "/model" + std::to_string(++m_fileCount) + ".exo"; // Others may be open still.
        model.write(m_path, GetParam());
        PtrRef<imp::cae::DataSourceCae> source(new imp::cae::DataSourceCae(1));
        m_isOpen = source->openFiles({Str(m_path)}, error);
        return source;
    }

    std::vector<double> valuesOf(imp::cae::DataSourceCae* source, const char* name, ug::ResultMapping mapping,
                                 int stateId, std::size_t part) {
        const ug::ResultInfo info = orvtest::findResult(source, name, mapping);
        ug::Error error;
        EXPECT_TRUE(orvtest::load(source, stateId, {info}, &error)) << error.message();
        const ug::DataState* state = source->state(std::size_t(stateId - 1));
        const std::span<const double> values = state->results(state->geometry(0))->find(info)->values(part)->span();
        return {values.begin(), values.end()};
    }

    // Of a scalar that is not loaded, one by one.
    std::vector<double> singleValuesOf(imp::cae::DataSourceCae* source, const char* name, ug::ResultMapping mapping,
                                       int stateId, std::size_t part) {
        const ug::ResultInfo info = orvtest::findResult(source, name, mapping);
        const ug::DataState* state = source->state(std::size_t(stateId - 1));
        std::vector<double> values(state->geometry(0)->part(part)->itemCount(mapping));
        for (std::size_t i = 0; i < values.size(); ++i) {
            EXPECT_TRUE(source->copyScalars(stateId, info, {0, part, i}, {&values[i], 1}, nullptr));
        }
        EXPECT_FALSE(state->hasLoaded(info));
        return values;
    }

    orvtest::ScratchFolder m_folder;
    int m_fileCount = 0;
    std::string m_path; ///< Of the latest one.
    bool m_isOpen = false;
};

const Change NOTHING = [](Model&) {};

TEST_P(ExodusFile, IsRead) {
    const auto source = open(NOTHING);
    ASSERT_TRUE(m_isOpen);
    ASSERT_EQ(source->stateCount(), 2u);
    EXPECT_EQ(source->directory()->partInfos(0)[0].name(), Str("plate"));
    EXPECT_EQ(valuesOf(source.get(), "T", ug::PER_NODE, 2, 0), (std::vector<double>{11, 12, 13, 14}));
    // Nodes are in the file's order: 2, 3, 5 and 6.
    EXPECT_EQ(valuesOf(source.get(), "T", ug::PER_NODE, 2, 1), (std::vector<double>{12, 13, 15, 16}));
    EXPECT_EQ(valuesOf(source.get(), "Damage", ug::PER_ELEMENT, 1, 0), std::vector<double>{7});
    EXPECT_EQ(valuesOf(source.get(), "Damage", ug::PER_ELEMENT, 1, 1), std::vector<double>(2, UNDEFINED_DOUBLE));
    const ug::DataPart* rib = source->state(0)->geometry(0)->part(1);
    EXPECT_EQ(rib->nodes()->nodeId(2), 5);
    EXPECT_EQ(rib->elements()->elementId(1), 3);
}

TEST_P(ExodusFile, MayHaveItsOlderForm) {
    const auto source = open([](Model& model) {
        model.remove("coordx");
        model.remove("coordy");
        model.variables.push_back({"coord", NC_FLOAT, {"num_dim", "num_nodes"}, {0, 1, 1, 0, 2, 2, 0, 0, 1, 1, 0, 1}});
        model["vals_nod_var1"] = {"vals_nod_var",
                                  NC_DOUBLE,
                                  {"time_step", "num_nod_var", "num_nodes"},
                                  {1, 2, 3, 4, 5, 6, 11, 12, 13, 14, 15, 16}};
    });
    ASSERT_TRUE(m_isOpen);
    EXPECT_EQ(valuesOf(source.get(), "T", ug::PER_NODE, 2, 1), (std::vector<double>{12, 13, 15, 16}));
    const std::span<const double> xyz = source->state(0)->geometry(0)->part(1)->nodes()->coordinates();
    EXPECT_EQ(std::vector<double>(xyz.begin(), xyz.end()), (std::vector<double>{1, 0, 0, 1, 1, 0, 2, 0, 0, 2, 1, 0}));
}

TEST_P(ExodusFile, SingleValuesAreThoseOfTheField) {
    const Change changes[] = {
        NOTHING,
        [](Model& model) {
            model["vals_nod_var1"] = {"vals_nod_var",
                                      NC_DOUBLE,
                                      {"time_step", "num_nod_var", "num_nodes"},
                                      {1, 2, 3, 4, 5, 6, 11, 12, 13, 14, 15, 16}};
        },
        [](Model& model) { // The plate as a polygon, which becomes three elements.
            model["connect1"] = {"connect1", NC_INT, {"five"}, {1, 2, 6, 3, 4}, "NSIDED"};
            model.variables.push_back({"ebepecnt1", NC_INT, {"num_el_in_blk1"}, {5}});
        },
    };
    for (const Change& change : changes) {
        const auto source = open(change);
        ASSERT_TRUE(m_isOpen);
        for (const auto& [name, mapping] : {std::pair("T", ug::PER_NODE), std::pair("Damage", ug::PER_ELEMENT)}) {
            for (const int stateId : {1, 2}) {
                for (std::size_t part = 0; part < 2; ++part) {
                    const std::vector<double> single = singleValuesOf(source.get(), name, mapping, stateId, part);
                    EXPECT_FALSE(single.empty());
                    EXPECT_EQ(single, valuesOf(source.get(), name, mapping, stateId, part));
                    source->dropResult(orvtest::findResult(source.get(), name, mapping));
                }
            }
        }
    }
}

// A field that cannot be read has no single values either.
TEST_P(ExodusFile, SingleValuesOfADamagedFieldAreRefusedAsTheFieldIs) {
    const auto source = open([](Model& m) {
        m["vals_nod_var1"] = {"vals_nod_var1", NC_DOUBLE, {"time_step", "five"}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}};
    });
    ASSERT_TRUE(m_isOpen);
    double value = 0;
    ug::Error error;
    EXPECT_FALSE(
        source->copyScalars(1, orvtest::findResult(source.get(), "T"), {0, 0, 0}, std::span(&value, 1), &error));
    EXPECT_EQ(error.message(), Str(m_path + ": has no values of 'T' for its 6 nodes"));
}

TEST_P(ExodusFile, HasAStateForEachStepOfTheSameTime) {
    const auto source = open([](Model& model) { model["time_whole"].numbers = {1, 1}; });
    ASSERT_TRUE(m_isOpen);
    EXPECT_EQ(valuesOf(source.get(), "T", ug::PER_NODE, 1, 0), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(valuesOf(source.get(), "T", ug::PER_NODE, 2, 0), (std::vector<double>{11, 12, 13, 14}));
}

TEST_P(ExodusFile, HasNoResultsWithoutTimes) {
    const auto source = open([](Model& model) {
        for (const char* name : {"time_whole", "vals_nod_var1", "vals_elem_var1eb1"}) {
            model.remove(name);
        }
    });
    ASSERT_TRUE(m_isOpen);
    ASSERT_EQ(source->stateCount(), 1u);
    EXPECT_TRUE(source->directory()->scalarResultInfos().empty());
}

TEST_P(ExodusFile, TellsWhatIsWrongWhenItIsOpened) {
    struct Row {
        Change change;
        const char* error;
    };
    const Row rows[] = {
        {[](Model& m) { m.remove("coordx"); }, "is no Exodus II file, or has no nodes"},
        {[](Model& m) { m.remove("eb_prop1"); },
         "is no Exodus II file, or has no whole index of its blocks of elements"},
        {[](Model& m) {
             m["eb_prop1"] = {"eb_prop1", NC_INT, {"five"}, {1, 2, 3, 4, 5}};
         },
         "is no Exodus II file, or has no whole index of its blocks of elements"},
        {[](Model& m) { m.resize("num_elem", 2); }, "has more elements in its blocks than the 2 that it tells of"},
        {[](Model& m) { m.remove("connect1"); }, "block 'plate' does not tell the nodes of its 1 elements"},
        {[](Model& m) {
             m["connect1"] = {"connect1", NC_INT, {"two", "num_nod_per_el2"}, {1, 2, 3, 1, 2, 4}, "TRI"};
         },
         "block 'plate' does not tell the nodes of its 1 elements"},
        {[](Model& m) { m.remove("name_nod_var"); }, "does not tell the names of its 1 variables of nodes"},
        {[](Model& m) { m.remove("name_elem_var"); }, "does not tell the names of its 1 variables of elements"},
        {[](Model& m) {
             m["time_whole"] = {"time_whole", NC_CHAR, {"two"}, {}, "xx"};
         },
         "does not tell the times of its 2 steps"},
    };
    for (const Row& row : rows) {
        ug::Error error;
        open(row.change, &error);
        EXPECT_EQ(error.message(), Str(m_path + ": " + row.error));
    }
}

TEST_P(ExodusFile, TellsWhatIsWrongWhenItIsLoaded) {
    struct Row {
        Change change;
        const char* error;
    };
    const Row rows[] = {
        {[](Model& m) { m.resize("num_dim", 4); }, "has coordinates of 4 dimensions"},
        {[](Model& m) { m.remove("coordy"); }, "has no coordinates of its 6 nodes"},
        {[](Model& m) {
             m["coordy"] = {"coordy", NC_DOUBLE, {"five"}, {0, 0, 1, 1, 0}};
         },
         "has no coordinates of its 6 nodes"},
        {[](Model& m) { m["connect1"].numbers[2] = 0; }, "an element of block 'plate' has the node 0, but there are 6"},
        {[](Model& m) { m["connect2"].numbers[5] = 7; }, "an element of block 'rib' has the node 7, but there are 6"},
        {[](Model& m) { m.remove("vals_nod_var1"); }, "has no values of 'T' for its 6 nodes"},
        {[](Model& m) {
             m["vals_nod_var1"] = {"vals_nod_var1", NC_DOUBLE, {"time_step", "five"}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10}};
         },
         "has no values of 'T' for its 6 nodes"},
    };
    for (const Row& row : rows) {
        const auto source = open(row.change);
        ASSERT_TRUE(m_isOpen) << row.error;
        ug::Error error;
        EXPECT_FALSE(orvtest::load(source.get(), 1, {orvtest::findResult(source.get(), "T")}, &error)) << row.error;
        EXPECT_EQ(error.message(), Str(m_path + ": " + row.error));
    }
    const auto source = open([](Model& m) {
        m["vals_elem_var1eb1"] = {"vals_elem_var1eb1", NC_DOUBLE, {"time_step", "two"}, {1, 2, 3, 4}};
    });
    ug::Error error;
    const ug::ResultInfo damage = orvtest::findResult(source.get(), "Damage", ug::PER_ELEMENT);
    EXPECT_FALSE(orvtest::load(source.get(), 1, {damage}, &error));
    EXPECT_EQ(error.message(), Str(m_path + ": has no values of 'Damage' for the 1 elements of block 'plate'"));
}

TEST_P(ExodusFile, LeavesUnknownElementsOutWithAWarning) {
    const auto source = open([](Model& model) { model["connect2"].text = "FOO"; });
    ASSERT_TRUE(m_isOpen);
    ASSERT_EQ(source->directory()->warnings().size(), 1u);
    EXPECT_EQ(source->directory()->warnings()[0],
              Str(m_path + ": block 'rib' is left out: its 2 elements are of type 'FOO' with 3 nodes"));
    EXPECT_EQ(valuesOf(source.get(), "T", ug::PER_NODE, 1, 0), (std::vector<double>{1, 2, 3, 4}));
    EXPECT_EQ(source->state(0)->geometry(0)->part(1)->nodes()->nodeCount(), 0u);
}

TEST_P(ExodusFile, HasPolygonsWhoseCountsAddUp) {
    const auto polygons = [](std::vector<double> counts) {
        return [counts](Model& model) {
            model["connect1"] = {"connect1", NC_INT, {"five"}, {1, 2, 6, 3, 4}, "NSIDED"};
            model.variables.push_back({"ebepecnt1", NC_INT, {"num_el_in_blk1"}, counts});
        };
    };
    auto source = open(polygons({5}));
    ASSERT_TRUE(m_isOpen);
    EXPECT_EQ(valuesOf(source.get(), "T", ug::PER_NODE, 1, 0), (std::vector<double>{1, 2, 3, 4, 6}));
    EXPECT_EQ(source->state(0)->geometry(0)->part(0)->elements()->elementCount(), 3u); // Triangles.
    for (const double count : {-5.0, 0.0, 4.0, 6.0}) {
        source = open(polygons({count}));
        ug::Error error;
        EXPECT_FALSE(orvtest::load(source.get(), 1, {orvtest::findResult(source.get(), "T")}, &error)) << count;
        EXPECT_EQ(error.message(), Str(m_path + ": block 'plate' does not tell how many nodes each element has"));
    }
}

INSTANTIATE_TEST_SUITE_P(OfEachFormat, ExodusFile, testing::Values(0, NC_64BIT_OFFSET, NC_64BIT_DATA, NC_NETCDF4));

} // namespace
