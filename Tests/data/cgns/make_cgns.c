/* Writes CGNS files through the CGNS library, each as HDF5 and as ADF. See make_cgns.sh. */
#include <cgnslib.h>

#include <math.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define CHECK(call) check((call), #call)

static void check(int status, const char* what) {
    if (status) {
        fprintf(stderr, "make_cgns: %s: %s\n", what, cg_get_error());
        exit(1);
    }
}

static int file;
static int base;
static int zone;

static void create(const char* name, int type) {
    char path[64];
    snprintf(path, sizeof path, "%s%s.cgns", name, type == CG_FILE_ADF ? "_adf" : "");
    CHECK(cg_set_file_type(type));
    CHECK(cg_open(path, CG_MODE_WRITE, &file));
}

static void addBase(const char* name, int cellDimension, int physicalDimension) {
    CHECK(cg_base_write(file, name, cellDimension, physicalDimension, &base));
}

static void addZone(const char* name, ZoneType_t type, const cgsize_t* sizes) {
    CHECK(cg_zone_write(file, base, name, sizes, type, &zone));
}

static void addUnstructured(const char* name, cgsize_t nodes, cgsize_t cells) {
    const cgsize_t sizes[3] = {nodes, cells, 0};
    addZone(name, Unstructured, sizes);
}

/* Coordinates node after node. */
static void addCoordinates(const char* grid, DataType_t type, int dimension, int count, const double* xyz) {
    static const char* const NAMES[] = {"CoordinateX", "CoordinateY", "CoordinateZ"};
    double values[64];
    float shortValues[64];
    int index;
    int d;
    int i;
    if (strcmp(grid, "GridCoordinates") != 0) {
        CHECK(cg_grid_write(file, base, zone, grid, &index));
    }
    for (d = 0; d < dimension; ++d) {
        for (i = 0; i < count; ++i) {
            values[i] = xyz[dimension * i + d];
            shortValues[i] = (float)values[i];
        }
        if (strcmp(grid, "GridCoordinates") == 0) {
            CHECK(cg_coord_write(file, base, zone, type, NAMES[d],
                                 type == RealDouble ? (void*)values : (void*)shortValues, &index));
        } else {
            cgsize_t size = count;
            CHECK(cg_goto(file, base, "Zone_t", zone, "GridCoordinates_t", 2, "end"));
            CHECK(cg_array_write(NAMES[d], RealDouble, 1, &size, values));
        }
    }
}

static void addSection(const char* name, ElementType_t type, int begin, int end, const cgsize_t* nodes) {
    int index;
    CHECK(cg_section_write(file, base, zone, name, type, begin, end, 0, nodes, &index));
}

static int addSolution(const char* name, GridLocation_t location) {
    int solution;
    CHECK(cg_sol_write(file, base, zone, name, location, &solution));
    return solution;
}

/* Values that tell where they are. */
static void addArray(int solution, const char* name, int count, double first) {
    double values[64];
    int index;
    int i;
    for (i = 0; i < count; ++i) {
        values[i] = first + 0.25 * i;
    }
    CHECK(cg_field_write(file, base, zone, solution, RealDouble, name, values, &index));
}

static void addArrays(int solution, const char* stem, const char* endings, int count, double first) {
    char list[64];
    char name[64];
    const char* ending;
    strcpy(list, endings);
    for (ending = strtok(list, " "); ending; ending = strtok(NULL, " ")) {
        snprintf(name, sizeof name, "%s%s", stem, ending);
        addArray(solution, name, count, first);
        first += 100;
    }
}

static void addTimes(int count, const double* times) {
    cgsize_t size = count;
    CHECK(cg_biter_write(file, base, "TimeIterValues", count));
    CHECK(cg_goto(file, base, "BaseIterativeData_t", 1, "end"));
    CHECK(cg_array_write("TimeValues", RealDouble, 1, &size, times));
}

/* The names of what belongs to each time, 32 characters each. */
static void addPointers(const char* name, const char* format, int count) {
    char texts[32 * 8 + 1];
    char text[33];
    cgsize_t sizes[2] = {32, 0};
    int i;
    sizes[1] = count;
    memset(texts, ' ', sizeof texts);
    for (i = 0; i < count; ++i) {
        snprintf(text, sizeof text, format, i + 1);
        memcpy(texts + 32 * i, text, strlen(text));
    }
    CHECK(cg_goto(file, base, "Zone_t", zone, "ZoneIterativeData_t", 1, "end"));
    CHECK(cg_array_write(name, Character, 2, sizes, texts));
}

static const double CUBE[] = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 1, 1, 1, 0, 1, 1};
static const cgsize_t EIGHT[] = {1, 2, 3, 4, 5, 6, 7, 8};

/* Two zones, two times; values of nodes and elements, some of them only in one zone or at one time. */
static void makeStates(int type) {
    const double times[] = {0.5, 2};
    const double prism[] = {2, 0, 0, 3, 0, 0, 2, 1, 0, 2, 0, 1, 3, 0, 1, 2, 1, 1, 2.5, 0.5, 2};
    const cgsize_t cells[] = {1, 2, 3, 4, 5, 6, 4, 5, 6, 7};
    char name[33];
    int z;
    int step;
    int solution;
    create("states", type);
    addBase("Wing", 3, 3);
    for (z = 0; z < 2; ++z) {
        const int nodes = z == 0 ? 8 : 7;
        addUnstructured(z == 0 ? "Skin" : "Spar", nodes, z == 0 ? 1 : 2);
        addCoordinates("GridCoordinates", z == 0 ? RealDouble : RealSingle, 3, nodes, z == 0 ? CUBE : prism);
        if (z == 0) {
            addSection("Hexahedra", HEXA_8, 1, 1, EIGHT);
        } else {
            addSection("Prisms", PENTA_6, 1, 1, cells);
            addSection("Tops", TETRA_4, 2, 2, cells + 6);
        }
        for (step = 1; step <= 2; ++step) {
            snprintf(name, sizeof name, "AtNodes%d", step);
            solution = addSolution(name, Vertex);
            addArrays(solution, "Displacement", "X Y Z", nodes, 1000 * step + 10 * z);
            if (z == 0) {
                addArrays(solution, "Stress", "XX XY XZ YY YZ ZZ", nodes, 2000 * step);
            }
            if (step == 2) {
                addArray(solution, "Peak", nodes, 7 + z);
            }
            snprintf(name, sizeof name, "InCells%d", step);
            solution = addSolution(name, CellCenter);
            if (z == 1) {
                addArrays(solution, "Velocity", "X Y Z", 2, 4000 * step);
            }
            addArray(solution, "Damage", z + 1, 0.125 * step);
        }
        CHECK(cg_ziter_write(file, base, zone, "ZoneIterativeData"));
        addPointers("FlowSolutionPointers", "AtNodes%d", 2);
        addPointers("FlowSolutionCellPointers", "InCells%d", 2);
    }
    addTimes(2, times);
    CHECK(cg_close(file));
}

int main(void) {
    const int types[] = {CG_FILE_HDF5, CG_FILE_ADF};
    int i;
    for (i = 0; i < 2; ++i) {
        makeStates(types[i]);
    }
    return 0;
}
