/* Writes CGNS files through the CGNS library, as HDF5 and as ADF. See make_cgns.sh. */
#include <cgnslib.h>

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
    snprintf(path, sizeof path, "%s.cgns", name);
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
    double values[160];
    float shortValues[160];
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

/* Of elements with as many nodes as it takes, by where they begin in the list. */
static void addLists(const char* name, ElementType_t type, int count, const cgsize_t* nodes, const cgsize_t* offsets) {
    int index;
    CHECK(cg_poly_section_write(file, base, zone, name, type, 1, count, 0, nodes, offsets, &index));
}

static int addSolution(const char* name, GridLocation_t location) {
    int solution;
    CHECK(cg_sol_write(file, base, zone, name, location, &solution));
    return solution;
}

/* Values that tell where they are. */
static void addArray(int solution, const char* name, int count, double first) {
    double values[160];
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
static void addNames(const char* name, int count, const char* a, const char* b, const char* c) {
    const char* const names[] = {a, b, c};
    char texts[32 * 3 + 1];
    cgsize_t sizes[2] = {32, 0};
    int i;
    sizes[1] = count;
    memset(texts, ' ', sizeof texts);
    for (i = 0; i < count; ++i) {
        memcpy(texts + 32 * i, names[i], strlen(names[i]));
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
    create(type == CG_FILE_ADF ? "states_adf" : "states", type);
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
        addNames("FlowSolutionPointers", 2, "AtNodes1", "AtNodes2", "");
        addNames("FlowSolutionCellPointers", 2, "InCells1", "InCells2", "");
    }
    addTimes(2, times);
    CHECK(cg_close(file));
}

/* What the library calls a type of elements, how many corners it has, and its edges with a node in the middle. What nodes
 * are left are those in the middle of faces and of the volume. */
struct Shape {
    ElementType_t type;
    int nodes;
    int corners;
    const char* edges;
};

static const struct Shape LINEAR[] = {{NODE, 1, 1, ""},    {BAR_2, 2, 2, ""},   {TRI_3, 3, 3, ""},   {QUAD_4, 4, 4, ""},
                                      {TETRA_4, 4, 4, ""}, {PYRA_5, 5, 5, ""}, {PENTA_6, 6, 6, ""}, {HEXA_8, 8, 8, ""}};
static const struct Shape QUADRATIC[] = {{BAR_3, 3, 2, "01"},
                                         {TRI_6, 6, 3, "011220"},
                                         {QUAD_8, 8, 4, "01122330"},
                                         {QUAD_9, 9, 4, "01122330"},
                                         {TETRA_10, 10, 4, "011220031323"},
                                         {PYRA_13, 13, 5, "0112233004142434"},
                                         {PYRA_14, 14, 5, "0112233004142434"},
                                         {PENTA_15, 15, 6, "011220031425344553"},
                                         {PENTA_18, 18, 6, "011220031425344553"},
                                         {HEXA_20, 20, 8, "011223300415263745566774"},
                                         {HEXA_27, 27, 8, "011223300415263745566774"}};

static double corner(const struct Shape* shape, int node, int axis) {
    static const double TRIANGLES[] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1, 1, 0, 1, 0, 1, 1};
    static const double APEX[] = {0.5, 0.5, 1};
    if (shape->corners == 5 && node == 4) {
        return APEX[axis];
    }
    return shape->corners == 6 || shape->corners == 3 || shape->type == TETRA_4 || shape->type == TETRA_10
               ? TRIANGLES[3 * node + axis]
               : CUBE[3 * node + axis];
}

static double place(const struct Shape* shape, int node, int axis) {
    const int edge = node - shape->corners;
    double sum = 0;
    int i;
    if (edge < 0) {
        return corner(shape, node, axis);
    }
    if (edge < (int)strlen(shape->edges) / 2) {
        return (corner(shape, shape->edges[2 * edge] - '0', axis) +
                corner(shape, shape->edges[2 * edge + 1] - '0', axis)) /
               2;
    }
    for (i = 0; i < shape->corners; ++i) {
        sum += corner(shape, i, axis) / shape->corners;
    }
    return sum;
}

/* An element of each shape, side by side, in a section of its own each, or all in one. */
static void addShapes(const char* name, const struct Shape* shapes, int count, int isMixed) {
    double coordinates[3 * 160];
    cgsize_t nodes[200];
    cgsize_t offsets[16] = {0};
    cgsize_t* end = nodes;
    char section[33];
    int first = 0;
    int s;
    int i;
    for (s = 0; s < count; ++s) {
        for (i = 0; i < shapes[s].nodes; ++i, ++first) {
            coordinates[3 * first] = 2 * s + place(&shapes[s], i, 0);
            coordinates[3 * first + 1] = place(&shapes[s], i, 1);
            coordinates[3 * first + 2] = place(&shapes[s], i, 2);
        }
    }
    addUnstructured(name, first, count);
    addCoordinates("GridCoordinates", RealDouble, 3, first, coordinates);
    for (s = 0, first = 0; s < count; ++s) {
        if (isMixed) {
            *end++ = shapes[s].type;
        } else {
            end = nodes;
        }
        for (i = 0; i < shapes[s].nodes; ++i) {
            *end++ = ++first;
        }
        offsets[s + 1] = end - nodes;
        if (!isMixed) {
            snprintf(section, sizeof section, "Section%d", s + 1);
            addSection(section, shapes[s].type, s + 1, s + 1, nodes);
        }
    }
    if (isMixed) {
        addLists("All", MIXED, count, nodes, offsets);
    }
    addArray(addSolution("AtNodes", Vertex), "Temperature", first, 20);
    addArray(addSolution("InCells", CellCenter), "Number", count, 1);
}

static void makeCells(void) {
    create("cells", CG_FILE_ADF);
    addBase("Zoo", 3, 3);
    addShapes("Linear", LINEAR, 8, 0);
    addShapes("Quadratic", QUADRATIC, 11, 0);
    addShapes("Mixed", QUADRATIC, 11, 1);
    addShapes("MixedLinear", LINEAR, 8, 1);
    CHECK(cg_close(file));
}

static void addRind(const char* label, int index, const int* rind) {
    CHECK(cg_goto(file, base, "Zone_t", zone, label, index, "end"));
    CHECK(cg_rind_write(rind));
}

/* Blocks of three, two and one dimensions; the first one with layers around it that do not belong to it. */
static void makeStructured(void) {
    static const char* const AXES[] = {"CoordinateX", "CoordinateY", "CoordinateZ"};
    const int rind[] = {1, 0, 0, 0, 0, 1};
    const int cellRind[] = {0, 1, 0, 0, 1, 0};
    const cgsize_t block[] = {3, 2, 2, 2, 1, 1, 0, 0, 0};
    const cgsize_t sheet[] = {3, 2, 2, 1, 0, 0};
    const cgsize_t line[] = {3, 2, 0};
    double values[24];
    int solution;
    int index;
    int d;
    int i;
    create("structured", CG_FILE_HDF5);
    addBase("Volume", 3, 3);
    addZone("Block", Structured, block);
    CHECK(cg_grid_write(file, base, zone, "GridCoordinates", &index));
    addRind("GridCoordinates_t", 1, rind);
    for (d = 0; d < 3; ++d) { /* 4 x 2 x 3 nodes with the layers. */
        for (i = 0; i < 24; ++i) {
            values[i] = d == 0 ? i % 4 - 1 : d == 1 ? i / 4 % 2 + 0.25 * (i % 4) : i / 8;
        }
        CHECK(cg_coord_write(file, base, zone, RealDouble, AXES[d], values, &index));
    }
    addArrays(addSolution("AtNodes", Vertex), "Velocity", "X Y Z", 12, 1);
    solution = addSolution("InCells", CellCenter);
    addRind("FlowSolution_t", solution, cellRind);
    addArray(solution, "Pressure", 6, 50); /* 3 x 1 x 2 */
    addBase("Surface", 2, 3);
    addZone("Sheet", Structured, sheet);
    for (d = 0; d < 3; ++d) {
        for (i = 0; i < 6; ++i) {
            values[i] = d == 0 ? i % 3 : d == 1 ? i / 3 : 0.5 * i;
        }
        CHECK(cg_coord_write(file, base, zone, RealDouble, AXES[d], values, &index));
    }
    addArray(addSolution("InCells", CellCenter), "Pressure", 2, 80);
    addBase("Curve", 1, 3);
    addZone("Line", Structured, line);
    for (d = 0; d < 3; ++d) {
        CHECK(cg_coord_write(file, base, zone, RealDouble, AXES[d], values + d, &index));
    }
    CHECK(cg_close(file));
}

/* In a plane, where vectors have two components. */
static void makePlane(void) {
    const double triangles[] = {0, 0, 1, 0, 0, 1, 1, 1};
    const cgsize_t nodes[] = {1, 2, 3, 2, 4, 3};
    create("plane", CG_FILE_HDF5);
    addBase("Plane", 2, 2);
    addUnstructured("Plate", 4, 2);
    addCoordinates("GridCoordinates", RealSingle, 2, 4, triangles);
    addSection("Triangles", TRI_3, 1, 2, nodes);
    addArrays(addSolution("AtNodes", Vertex), "Displacement", "X Y", 4, 1);
    addArrays(addSolution("InCells", CellCenter), "Stress", "XX XY YY", 2, 1);
    CHECK(cg_close(file));
}

/* Nodes that move, and a zone that is not there from the beginning. */
static void makeMoving(void) {
    const double times[] = {0, 0.5, 1};
    double moved[24];
    int z;
    int i;
    create("moving", CG_FILE_HDF5);
    addBase("Base", 3, 3);
    for (z = 0; z < 2; ++z) {
        addUnstructured(z == 0 ? "Piston" : "Late", 8, 1);
        for (i = 0; i < 24; ++i) {
            moved[i] = CUBE[i] + (i % 3 == 0 ? 1 + z : 0);
        }
        addCoordinates("GridCoordinates", RealDouble, 3, 8, CUBE);
        addCoordinates("Grid2", RealDouble, 3, 8, moved);
        addSection("Cells", HEXA_8, 1, 1, EIGHT);
        addArray(addSolution("Pressure1", CellCenter), "Pressure", 1, 10 + z);
        addArray(addSolution("Pressure2", CellCenter), "Pressure", 1, 20 + z);
        CHECK(cg_ziter_write(file, base, zone, "ZoneIterativeData"));
        addNames("GridCoordinatesPointers", 3, z == 0 ? "GridCoordinates" : "Null", "Grid2", "GridCoordinates");
        addNames("FlowSolutionPointers", 3, "Pressure1", "Pressure2", z == 0 ? "Pressure1" : "Null");
    }
    addTimes(3, times);
    CHECK(cg_close(file));
}

/* Polygons; and a zone of polyhedra. */
static void makePolygons(void) {
    const double places[] = {0, 0, 0, 1, 0, 0, 1, 1, 0, 0, 1, 0, 2, 0, 0, 3, 1, 0, 2, 2, 0};
    const cgsize_t faces[] = {1, 2, 3, 4, 4, 3, 7};
    const cgsize_t offsets[] = {0, 4, 7};
    create("polygons", CG_FILE_ADF);
    addBase("Base", 2, 3);
    addUnstructured("Faces", 7, 2);
    addCoordinates("GridCoordinates", RealDouble, 3, 7, places);
    addLists("Polygons", NGON_n, 2, faces, offsets);
    addArray(addSolution("InCells", CellCenter), "Pressure", 2, 1);
    CHECK(cg_close(file));
}

int main(void) {
    const int types[] = {CG_FILE_HDF5, CG_FILE_ADF};
    int i;
    for (i = 0; i < 2; ++i) {
        makeStates(types[i]);
    }
    makeCells();
    makeStructured();
    makePlane();
    makeMoving();
    makePolygons();
    return 0;
}
