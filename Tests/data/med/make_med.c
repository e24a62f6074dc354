/* Writes MED files through libmedc, as code_aster and Salome do. See make_med.sh. */
#include <med.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>

#define CHECK(call) check((call) >= 0, #call)

static void check(int isGood, const char* what) {
    if (!isGood) {
        fprintf(stderr, "make_med: %s\n", what);
        exit(1);
    }
}

static med_idt create(const char* name) {
    const med_idt file = MEDfileOpen(name, MED_ACC_CREAT);
    CHECK(file);
    return file;
}

static const char* AXES = "X               Y               Z               ";
static const char* UNITS = "m               m               m               ";

static void mesh(med_idt file, const char* name, int dimension, int count, const double* coordinates) {
    CHECK(MEDmeshCr(file, name, dimension, dimension, MED_UNSTRUCTURED_MESH, "", "s", MED_SORT_DTIT, MED_CARTESIAN,
                    AXES + (3 - dimension) * MED_SNAME_SIZE, UNITS + (3 - dimension) * MED_SNAME_SIZE));
    CHECK(MEDfamilyCr(file, name, "FAMILLE_ZERO", 0, 0, ""));
    CHECK(MEDmeshNodeCoordinateWr(file, name, MED_NO_DT, MED_NO_IT, 0, MED_FULL_INTERLACE, count, coordinates));
}

static void cells(med_idt file, const char* name, int type, int count, const med_int* nodes, const med_int* families) {
    CHECK(MEDmeshElementConnectivityWr(file, name, MED_NO_DT, MED_NO_IT, 0, MED_CELL, type, MED_NODAL, MED_FULL_INTERLACE,
                                       count, nodes));
    if (families) {
        CHECK(MEDmeshEntityFamilyNumberWr(file, name, MED_NO_DT, MED_NO_IT, MED_CELL, type, count, families));
    }
}

static void numbers(med_idt file, const char* name, med_entity_type entity, int type, int count, const med_int* values) {
    CHECK(MEDmeshEntityNumberWr(file, name, MED_NO_DT, MED_NO_IT, entity, type, count, values));
}

static void family(med_idt file, const char* mesh, const char* name, int number, int groupCount, const char* a,
                   const char* b) {
    char groups[2 * MED_LNAME_SIZE + 1] = {0};
    strcpy(groups, a);
    strcpy(groups + MED_LNAME_SIZE, b);
    CHECK(MEDfamilyCr(file, mesh, name, number, groupCount, groups));
}

static void field(med_idt file, const char* name, med_field_type type, int count, const char* components,
                  const char* mesh, const char* timeUnit) {
    char padded[16 * MED_SNAME_SIZE + 1];
    char units[16 * MED_SNAME_SIZE + 1];
    char list[256];
    memset(padded, ' ', sizeof padded);
    memset(units, ' ', sizeof units);
    strcpy(list, components);
    int i = 0;
    for (char* word = strtok(list, " "); word; word = strtok(NULL, " ")) {
        memcpy(padded + i++ * MED_SNAME_SIZE, word, strlen(word));
    }
    padded[count * MED_SNAME_SIZE] = 0;
    units[count * MED_SNAME_SIZE] = 0;
    CHECK(MEDfieldCr(file, name, type, count, padded, units, timeUnit, mesh));
}

static void values(med_idt file, const char* name, int step, double time, med_entity_type entity, int type,
                   const char* profile, const char* localization, int count, const void* data) {
    CHECK(MEDfieldValueWithProfileWr(file, name, step, step, time, entity, type, MED_COMPACT_STMODE, profile, localization,
                                     MED_FULL_INTERLACE, MED_ALL_CONSTITUENT, count, data));
}

/* All different: a hundred for each quantity, a tenth for each place. */
static double* run(double first, int count) {
    static double data[4096];
    for (int i = 0; i < count; ++i) {
        data[i] = first + 0.1 * i;
    }
    return data;
}

/* A cell's reference corners and the pairs of corners with a node between, then centre nodes. MED turns volumes so that
   their base or bottom runs clockwise when it is seen from the apex or the top. */
struct Shape {
    int type;
    int corners;
    double corner[8][3];
    int edges;
    int edge[12][2];
    int centres;
};

#define TRIANGLE {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}
#define TRIANGLE_EDGES {{0, 1}, {1, 2}, {2, 0}}
#define SQUARE {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}}
#define SQUARE_EDGES {{0, 1}, {1, 2}, {2, 3}, {3, 0}}
#define TETRA {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}}
#define TETRA_EDGES {{0, 1}, {1, 2}, {2, 0}, {0, 3}, {1, 3}, {2, 3}}
#define PYRA {{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}, {0.5, 0.5, 1}}
#define PYRA_EDGES {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {0, 4}, {1, 4}, {2, 4}, {3, 4}}
#define PENTA {{0, 0, 0}, {0, 1, 0}, {1, 0, 0}, {0, 0, 1}, {0, 1, 1}, {1, 0, 1}}
#define PENTA_EDGES {{0, 1}, {1, 2}, {2, 0}, {3, 4}, {4, 5}, {5, 3}, {0, 3}, {1, 4}, {2, 5}}
#define HEXA {{0, 0, 0}, {0, 1, 0}, {1, 1, 0}, {1, 0, 0}, {0, 0, 1}, {0, 1, 1}, {1, 1, 1}, {1, 0, 1}}
#define HEXA_EDGES                                                                                                     \
    {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6}, {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}}

static const struct Shape SHAPES[] = {
    {MED_POINT1, 1, {{0, 0, 0}}, 0, {{0}}, 0},
    {MED_SEG2, 2, {{0, 0, 0}, {1, 0, 0}}, 0, {{0}}, 0},
    {MED_SEG3, 2, {{0, 0, 0}, {1, 0, 0}}, 1, {{0, 1}}, 0},
    {MED_TRIA3, 3, TRIANGLE, 0, {{0}}, 0},
    {MED_QUAD4, 4, SQUARE, 0, {{0}}, 0},
    {MED_TRIA6, 3, TRIANGLE, 3, TRIANGLE_EDGES, 0},
    {MED_TRIA7, 3, TRIANGLE, 3, TRIANGLE_EDGES, 1},
    {MED_QUAD8, 4, SQUARE, 4, SQUARE_EDGES, 0},
    {MED_QUAD9, 4, SQUARE, 4, SQUARE_EDGES, 1},
    {MED_TETRA4, 4, TETRA, 0, {{0}}, 0},
    {MED_PYRA5, 5, PYRA, 0, {{0}}, 0},
    {MED_PENTA6, 6, PENTA, 0, {{0}}, 0},
    {MED_HEXA8, 8, HEXA, 0, {{0}}, 0},
    {MED_TETRA10, 4, TETRA, 6, TETRA_EDGES, 0},
    {MED_PYRA13, 5, PYRA, 8, PYRA_EDGES, 0},
    {MED_PENTA15, 6, PENTA, 9, PENTA_EDGES, 0},
    {MED_PENTA18, 6, PENTA, 9, PENTA_EDGES, 3},
    {MED_HEXA20, 8, HEXA, 12, HEXA_EDGES, 0},
    {MED_HEXA27, 8, HEXA, 12, HEXA_EDGES, 7},
};
enum { SHAPE_COUNT = sizeof SHAPES / sizeof SHAPES[0] };

/* One cell of each type, one beside the other; each with a value per cell and one per cell node, and one cell of a type
   that cannot be shown. */
static void writeCells(void) {
    static double coordinates[400][3];
    med_int firstNodes[SHAPE_COUNT];
    int count = 0;
    for (int s = 0; s < SHAPE_COUNT; ++s) {
        const struct Shape* shape = &SHAPES[s];
        firstNodes[s] = count;
        for (int i = 0; i < shape->corners; ++i, ++count) {
            memcpy(coordinates[count], shape->corner[i], sizeof coordinates[count]);
        }
        for (int i = 0; i < shape->edges; ++i, ++count) {
            for (int k = 0; k < 3; ++k) {
                coordinates[count][k] = (shape->corner[shape->edge[i][0]][k] + shape->corner[shape->edge[i][1]][k]) / 2;
            }
        }
        for (int i = 0; i < shape->centres; ++i, ++count) {
            coordinates[count][0] = coordinates[count][1] = coordinates[count][2] = 0.5;
        }
        for (int i = firstNodes[s]; i < count; ++i) {
            coordinates[i][0] += 2 * s;
        }
    }
    const med_idt file = create("cells.med");
    mesh(file, "cells", 3, count, coordinates[0]);
    field(file, "CELL", MED_FLOAT64, 1, "VAL", "cells", "s");
    field(file, "CELLNODE", MED_FLOAT64, 1, "VAL", "cells", "s");
    for (int s = 0; s < SHAPE_COUNT; ++s) {
        const int type = SHAPES[s].type;
        const int nodeCount = type % 100;
        med_int nodes[27];
        for (int i = 0; i < nodeCount; ++i) {
            nodes[i] = firstNodes[s] + i + 1;
        }
        cells(file, "cells", type, 1, nodes, NULL);
        values(file, "CELL", 1, 0.5, MED_CELL, type, MED_NO_PROFILE, MED_NO_LOCALIZATION, 1, run(s, 1));
        /* Both ways to say that values are at the nodes of cells. */
        values(file, "CELLNODE", 1, 0.5, MED_NODE_ELEMENT, type, MED_NO_PROFILE, MED_NO_LOCALIZATION, 1,
               run(100 * s, nodeCount));
        values(file, "CELLNODE", 2, 1.0, MED_CELL, type, MED_NO_PROFILE, MED_GAUSS_ELNO, 1, run(-100 * s, nodeCount));
    }
    const med_int cubic[] = {1, 2, 3, 4, 2, 3, 4, 5};
    cells(file, "cells", MED_SEG4, 2, cubic, NULL);
    const med_int polygon[] = {1, 6}, polygonNodes[] = {1, 2, 3, 4, 5};
    CHECK(MEDmeshPolygonWr(file, "cells", MED_NO_DT, MED_NO_IT, 0, MED_CELL, MED_NODAL, 2, polygon, polygonNodes));
    CHECK(MEDfileClose(file));
}

/* Two bricks and a face of them, with the names and components of code_aster. */
static void writeBeam(void) {
    double coordinates[13][3];
    for (int i = 0; i < 3; ++i) {
        const double x[4][3] = {{i, 0, 0}, {i, 1, 0}, {i, 1, 1}, {i, 0, 1}};
        memcpy(coordinates[4 * i], x, sizeof x);
    }
    coordinates[12][0] = coordinates[12][1] = coordinates[12][2] = 9; /* Of no cell. */
    const med_idt file = create("beam.rmed");
    const char* name = "BEAM";
    mesh(file, name, 3, 13, coordinates[0]);
    /* The face at x = 0 seen from x = 1 runs counter-clockwise: clockwise is 1 4 3 2. */
    const med_int bricks[] = {1, 4, 3, 2, 5, 8, 7, 6, 5, 8, 7, 6, 9, 12, 11, 10};
    const med_int brickFamilies[] = {-2, -3};
    const med_int faces[] = {1, 2, 3, 4, 9, 10, 11, 12, 5, 6, 7, 8};
    const med_int faceFamilies[] = {-1, 0, -4};
    const med_int nodeNumbers[] = {101, 102, 103, 104, 105, 106, 107, 108, 109, 110, 111, 112, 113};
    const med_int brickNumbers[] = {71, 72}, faceNumbers[] = {81, 82, 83};
    const med_int nodeFamilies[] = {1, 1, 1, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    family(file, name, "FAM_-1", -1, 1, "CLAMP", "");
    family(file, name, "FAM_-2", -2, 2, "STEEL", "FINE");
    family(file, name, "FAM_-3", -3, 1, "STEEL", "");
    family(file, name, "FAM_-4", -4, 0, "", "");
    family(file, name, "FAM_1", 1, 1, "NODES", "");
    cells(file, name, MED_QUAD4, 3, faces, faceFamilies);
    cells(file, name, MED_HEXA8, 2, bricks, brickFamilies);
    numbers(file, name, MED_NODE, MED_NONE, 13, nodeNumbers);
    numbers(file, name, MED_CELL, MED_HEXA8, 2, brickNumbers);
    numbers(file, name, MED_CELL, MED_QUAD4, 3, faceNumbers);
    CHECK(MEDmeshEntityFamilyNumberWr(file, name, MED_NO_DT, MED_NO_IT, MED_NODE, MED_NONE, 13, nodeFamilies));

    const med_int second[] = {2}, someNodes[] = {3, 1, 12};
    CHECK(MEDprofileWr(file, "SECOND", 1, second));
    CHECK(MEDprofileWr(file, "SOMENODES", 3, someNodes));

    field(file, "RESU____DEPL", MED_FLOAT64, 6, "DX DY DZ DRX DRY DRZ", name, "s");
    field(file, "RESU____VITE", MED_FLOAT64, 3, "DX DY DZ", name, "s");
    field(file, "RESU____SIGM_ELNO", MED_FLOAT64, 6, "SIXX SIYY SIZZ SIXY SIXZ SIYZ", name, "s");
    field(file, "RESU____SIEF_ELGA", MED_FLOAT64, 6, "SIXX SIYY SIZZ SIXY SIXZ SIYZ", name, "s");
    field(file, "RESU____TEMP", MED_FLOAT64, 1, "TEMP", name, "s");
    field(file, "MATERIAL", MED_INT, 1, "NUMBER", name, "");
    const double centre[8 * 3] = {0}, weights[8] = {1};
    CHECK(MEDlocalizationWr(file, "GAUSS8", MED_HEXA8, 3, centre, MED_FULL_INTERLACE, 8, centre, weights,
                            MED_NO_INTERPOLATION, MED_NO_MESH_SUPPORT));
    for (int step = 1; step <= 3; ++step) {
        const double time = 0.25 * step;
        if (step != 2) { /* A step that lacks a field. */
            values(file, "RESU____DEPL", step, time, MED_NODE, MED_NONE, MED_NO_PROFILE, MED_NO_LOCALIZATION, 13,
                   run(1000 * step, 13 * 6));
        }
        values(file, "RESU____VITE", step, time, MED_NODE, MED_NONE, MED_NO_PROFILE, MED_NO_LOCALIZATION, 13,
               run(1000 * step + 100, 13 * 3));
        values(file, "RESU____SIGM_ELNO", step, time, MED_NODE_ELEMENT, MED_HEXA8, step == 3 ? "SECOND" : MED_NO_PROFILE,
               MED_NO_LOCALIZATION, step == 3 ? 1 : 2, run(1000 * step + 200, 2 * 8 * 6));
        values(file, "RESU____SIEF_ELGA", step, time, MED_CELL, MED_HEXA8, MED_NO_PROFILE, "GAUSS8", 2,
               run(1000 * step + 300, 2 * 8 * 6));
        values(file, "RESU____TEMP", step, time, MED_NODE, MED_NONE, "SOMENODES", MED_NO_LOCALIZATION, 3,
               run(1000 * step + 400, 3));
    }
    const med_int materials[] = {7, 8, 9, 5, 6};
    CHECK(MEDfieldValueWr(file, "MATERIAL", MED_NO_DT, MED_NO_IT, 0, MED_CELL, MED_QUAD4, MED_FULL_INTERLACE,
                          MED_ALL_CONSTITUENT, 3, (const unsigned char*)materials));
    CHECK(MEDfieldValueWr(file, "MATERIAL", MED_NO_DT, MED_NO_IT, 0, MED_CELL, MED_HEXA8, MED_FULL_INTERLACE,
                          MED_ALL_CONSTITUENT, 2, (const unsigned char*)(materials + 3)));
    CHECK(MEDfileClose(file));
}

/* Two plane meshes and a grid; modes; the other types of numbers; fields on both meshes. */
static void writePlanes(void) {
    const double square[] = {0, 0, 1, 0, 1, 1, 0, 1};
    const med_int triangles[] = {1, 2, 3, 1, 3, 4};
    const med_int families[] = {-1, -2};
    const med_int quad[] = {1, 2, 3, 4};
    const med_idt file = create("planes.med");
    mesh(file, "left", 2, 4, square);
    mesh(file, "right", 2, 4, square);
    family(file, "left", "LOWER", -1, 1, "LOWER", "");
    cells(file, "left", MED_TRIA3, 2, triangles, families);
    cells(file, "right", MED_QUAD4, 1, quad, NULL);
    CHECK(MEDmeshCr(file, "grid", 2, 2, MED_STRUCTURED_MESH, "", "", MED_SORT_DTIT, MED_CARTESIAN,
                    AXES + MED_SNAME_SIZE, UNITS + MED_SNAME_SIZE));
    CHECK(MEDmeshGridTypeWr(file, "grid", MED_CARTESIAN_GRID));

    field(file, "MODE____DEPL", MED_FLOAT64, 2, "DX DY", "left", "Hz");
    field(file, "MODE____SIGM_ELNO", MED_FLOAT64, 4, "SIXX SIYY SIZZ SIXY", "left", "Hz");
    field(file, "FLUX", MED_FLOAT32, 3, "FLUX FLUY FLUZ", "right", "Hz");
    field(file, "COUNT", MED_INT64, 2, "A", "right", "Hz"); /* The second component has no name. */
    field(file, "PLAIN", MED_INT32, 3, "", "right", "Hz");
    field(file, "GRID", MED_FLOAT64, 1, "A", "grid", "Hz");
    for (int mode = 1; mode <= 2; ++mode) {
        const double frequency = 12.5 * mode;
        values(file, "MODE____DEPL", mode, frequency, MED_NODE, MED_NONE, MED_NO_PROFILE, MED_NO_LOCALIZATION, 4,
               run(10 * mode, 8));
        values(file, "MODE____SIGM_ELNO", mode, frequency, MED_NODE_ELEMENT, MED_TRIA3, MED_NO_PROFILE,
               MED_NO_LOCALIZATION, 2, run(100 * mode, 2 * 3 * 4));
    }
    const float flux[] = {1.5f, 2.5f, 3.5f};
    const med_int64 counts[] = {5000000000, 6};
    const med_int32 plain[12] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12};
    values(file, "FLUX", 1, 12.5, MED_CELL, MED_QUAD4, MED_NO_PROFILE, MED_NO_LOCALIZATION, 1, flux);
    values(file, "COUNT", 1, 12.5, MED_CELL, MED_QUAD4, MED_NO_PROFILE, MED_NO_LOCALIZATION, 1, counts);
    values(file, "PLAIN", 1, 12.5, MED_NODE, MED_NONE, MED_NO_PROFILE, MED_NO_LOCALIZATION, 4, plain);
    CHECK(MEDfileClose(file));
}

int main(void) {
    writeCells();
    writeBeam();
    writePlanes();
    return 0;
}
