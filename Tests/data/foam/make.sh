#!/bin/bash
# Makes the cases of this folder, and expected.json. Needs Debian's openfoam (1912), whose solvers write them; the
# beginnings of cases are written here. expect.py reads them without VTK.
#
# cavity   icoFoam: flow with the usual beginning: included values, names of patches as expressions, no values
#          cavity_binary and cavity_gz are the same in OpenFOAM's other forms
# plate    solidDisplacementFoam: displacements and stresses, besides tensors that have one value everywhere
# moving   moveDynamicMesh, with polyhedra: points at each time, and displacements of nodes
# cells    laplacianFoam on all shapes of cells
# regions  laplacianFoam on two meshes of one case
set -e
cd "$(dirname "$0")"
export WM_PROJECT_DIR=${WM_PROJECT_DIR:-/usr/share/openfoam}

# header CLASS OBJECT
header()
{
    printf 'FoamFile\n{\n    version 2.0;\n    format ascii;\n    class %s;\n    object %s;\n}\n' "$1" "$2"
}

# begin CASE SOLVER END STEP INTERVAL FORMAT COMPRESSION
begin()
{
    rm -rf "$1"
    mkdir -p "$1/0" "$1/constant" "$1/system"
    cd "$1"
    touch "$1.foam"
    {
        header dictionary controlDict
        echo "application $2; startFrom startTime; startTime 0; stopAt endTime; endTime $3; deltaT $4;"
        echo "writeControl timeStep; writeInterval $5; purgeWrite 0; writeFormat $6; writePrecision 10;"
        echo "writeCompression $7; timeFormat general; timePrecision 6; runTimeModifiable false;"
    } > system/controlDict
    {
        header dictionary fvSchemes
        echo "ddtSchemes { default Euler; } d2dt2Schemes { default steadyState; } gradSchemes { default Gauss linear; }"
        echo "divSchemes { default Gauss linear; } laplacianSchemes { default Gauss linear corrected; }"
        echo "interpolationSchemes { default linear; } snGradSchemes { default corrected; }"
    } > system/fvSchemes
    {
        header dictionary fvSolution
        echo 'solvers { ".*" { solver PBiCGStab; preconditioner diagonal; tolerance 1e-10; relTol 0; } }'
        echo "PISO { nCorrectors 2; nNonOrthogonalCorrectors 0; pRefCell 0; pRefValue 0; }"
        echo "SIMPLE { nNonOrthogonalCorrectors 0; } stressAnalysis { compactNormalStress yes; nCorrectors 1; D 1e-9; }"
    } > system/fvSolution
}

# box NX NY NZ PATCHES: a mesh of 0.3 x 0.2 x 0.1
box()
{
    {
        header dictionary blockMeshDict
        echo "scale 0.1; vertices ((0 0 0) (3 0 0) (3 2 0) (0 2 0) (0 0 1) (3 0 1) (3 2 1) (0 2 1));"
        echo "blocks (hex (0 1 2 3 4 5 6 7) ($1 $2 $3) simpleGrading (1 1 1)); edges (); mergePatchPairs ();"
        echo "boundary ($4);"
    } > system/blockMeshDict
    blockMesh > log
}

# end: keeps what readers read
end()
{
    cp -r constant constant.all
    rm -rf constant
    for folder in constant.all constant.all/*
    do
        name=${folder#constant.all}
        if [ -d "$folder/polyMesh" ]
        then
            mkdir -p "constant$name/polyMesh"
            cp "$folder"/polyMesh/{points,faces,owner,neighbour,boundary}{,.gz} "constant$name/polyMesh" 2> /dev/null || true
        fi
    done
    rm -rf constant.all system log ./*.msh
    find . -depth -name uniform -exec rm -rf {} \;
    cd ..
}

# cavity CASE FORMAT COMPRESSION
cavity()
{
    begin "$1" icoFoam 0.5 0.01 25 "$2" "$3"
    box 3 2 1 "lid { type wall; faces ((3 7 6 2)); } left { type wall; faces ((0 4 7 3)); }
        right { type wall; faces ((2 6 5 1)); } bottom { type wall; faces ((1 5 4 0)); }
        frontAndBack { type empty; faces ((0 3 2 1) (4 5 6 7)); }"
    {
        header dictionary transportProperties
        echo "nu 0.01;"
    } > constant/transportProperties
    echo "lidValue uniform (1 0 0);" > 0/initial
    {
        header volVectorField U
        echo '#include "initial"'
        echo "dimensions [0 1 -1 0 0 0 0]; internalField uniform (0 0 0);"
        echo 'boundaryField { lid { type fixedValue; value $lidValue; } "(left|right)" { type noSlip; }'
        echo "    bottom { type noSlip; } frontAndBack { type empty; } }"
    } > 0/U
    {
        header volScalarField p
        echo "dimensions [0 2 -2 0 0 0 0]; internalField uniform 0;"
        echo 'boundaryField { ".*" { type zeroGradient; } frontAndBack { type empty; } }'
    } > 0/p
    icoFoam > log
    postProcess -func "grad(U)" -time 0.25: > log
    rm -f 0.*/phi*
    end
}

plate()
{
    begin plate solidDisplacementFoam 10 1 10 ascii off
    box 2 2 1 "left { type patch; faces ((0 4 7 3)); } right { type patch; faces ((2 6 5 1)); }
        others { type patch; faces ((1 5 4 0) (3 7 6 2) (0 3 2 1) (4 5 6 7)); }"
    {
        header dictionary mechanicalProperties
        echo "rho { type uniform; value 7854; } nu { type uniform; value 0.3; } E { type uniform; value 2e+11; }"
        echo "planeStress no;"
    } > constant/mechanicalProperties
    {
        header dictionary thermalProperties
        echo "C { type uniform; value 434; } k { type uniform; value 60.5; } alpha { type uniform; value 1.1e-05; }"
        echo "thermalStress no;"
    } > constant/thermalProperties
    {
        header volVectorField D
        echo "dimensions [0 1 0 0 0 0 0]; internalField uniform (0 0 0); boundaryField {"
        echo "    left { type fixedValue; value uniform (0 0 0); }"
        echo "    right { type tractionDisplacement; traction uniform (1e6 2e5 0); pressure uniform 0; value uniform (0 0 0); }"
        echo "    others { type tractionDisplacement; traction uniform (0 0 0); pressure uniform 0; value uniform (0 0 0); } }"
    } > 0/D
    solidDisplacementFoam > log
    rm -f 10/sigma[xyz]*
    {
        header volSymmTensorField sigma
        echo "dimensions [1 -1 -2 0 0 0 0]; internalField uniform (1 2 3 4 5 6); boundaryField {"
        echo "    left { type zeroGradient; } right { type fixedValue; value uniform (7 8 9.5 10 11 12); }"
        echo "    others { type fixedValue; value nonuniform List<symmTensor> 12 ("
        for i in 1 2 3 4 5 6 7 8 9 10 11 12
        do
            echo "        ($i 0.2 0.3 0.4 0.5 0.6)"
        done
        echo "    ); } }"
    } > 0/sigma
    {
        header volSphericalTensorField I
        echo "dimensions [0 0 0 0 0 0 0]; internalField uniform (2.5);"
        echo 'boundaryField { ".*" { type zeroGradient; } left { type fixedValue; value uniform (3.5); } }'
    } > 0/I
    {
        header volScalarField::Internal V
        echo "dimensions [0 3 0 0 0 0 0]; value nonuniform List<scalar> 4(1 2 3 4);"
    } > 0/V
    end
}

moving()
{
    begin moving moveDynamicMesh 2 1 1 ascii off
    box 2 1 1 "bottom { type wall; faces ((1 5 4 0)); } top { type wall; faces ((3 7 6 2)); }
        others { type patch; faces ((0 4 7 3) (2 6 5 1) (0 3 2 1) (4 5 6 7)); }"
    {
        header dictionary topoSetDict
        echo "actions ({ name c0; type cellSet; action new; source boxToCell; box (0 0 0) (0.15 1 1); });"
    } > system/topoSetDict
    topoSet > log
    refineHexMesh c0 -overwrite > log
    rm -f 0/{cellLevel,pointLevel}* 0/polyMesh -r
    {
        header dictionary dynamicMeshDict
        echo "dynamicFvMesh dynamicMotionSolverFvMesh; motionSolverLibs (fvMotionSolvers);"
        echo "motionSolver displacementLaplacian; displacementLaplacianCoeffs { diffusivity uniform; }"
    } > constant/dynamicMeshDict
    {
        header pointVectorField pointDisplacement
        echo "dimensions [0 1 0 0 0 0 0]; internalField uniform (0 0 0); boundaryField {"
        echo "    bottom { type fixedValue; value uniform (0 0 0); }"
        echo "    top { type oscillatingDisplacement; amplitude (0.02 0.1 0); omega 1; value uniform (0 0 0); }"
        echo "    others { type zeroGradient; } }"
    } > 0/pointDisplacement
    moveDynamicMesh -noFunctionObjects > log
    rm -f [12]/meshPhi [12]/polyMesh/{cellLevel,pointLevel,level0Edge,refinementHistory}*
    end
}

cells()
{
    begin cells laplacianFoam 2 1 2 ascii off
    # A hexahedron with a pyramid on it, a wedge beside it, and a tetrahedron on one side of the pyramid.
    cat > cells.msh <<MESH
\$MeshFormat
2.2 0 8
\$EndMeshFormat
\$PhysicalNames
2
2 1 "outside"
3 2 "inside"
\$EndPhysicalNames
\$Nodes
12
1 0 0 0
2 1 0 0
3 1 1 0
4 0 1 0
5 0 0 1
6 1 0 1
7 1 1 1
8 0 1 1
9 0.5 0.5 2
10 2 0.5 0
11 2 0.5 1
12 2 0.5 2
\$EndNodes
\$Elements
17
1 2 2 1 1 9 8 7
2 2 2 1 1 9 5 8
3 2 2 1 1 9 6 5
4 3 2 1 1 1 4 3 2
5 3 2 1 1 1 2 6 5
6 3 2 1 1 3 4 8 7
7 3 2 1 1 1 5 8 4
8 3 2 1 1 2 10 11 6
9 3 2 1 1 3 7 11 10
10 2 2 1 1 2 3 10
11 2 2 1 1 6 11 7
12 2 2 1 1 6 12 9
13 2 2 1 1 7 9 12
14 5 2 2 1 1 2 3 4 5 6 7 8
15 7 2 2 1 5 6 7 8 9
16 6 2 2 1 2 10 3 6 11 7
17 4 2 2 1 6 7 9 12
\$EndElements
MESH
    gmshToFoam cells.msh > log
    {
        header dictionary transportProperties
        echo "DT DT [0 2 -1 0 0 0 0] 0.1;"
    } > constant/transportProperties
    {
        header volScalarField T
        echo "dimensions [0 0 0 1 0 0 0]; internalField nonuniform List<scalar> 4(1 2 3 4);"
        echo 'boundaryField { "(outside|defaultFaces)" { type fixedValue; value uniform 300; } }'
    } > 0/T
    laplacianFoam > log
    postProcess -func writeCellCentres -time 2 > log
    rm -f 2/C[xyz] 2/DT 2/gradT*
    end
}

regions()
{
    begin regions laplacianFoam 1 1 1 ascii off
    box 2 1 1 "left { type patch; faces ((0 4 7 3)); } right { type patch; faces ((2 6 5 1)); }
        others { type patch; faces ((1 5 4 0) (3 7 6 2) (0 3 2 1) (4 5 6 7)); }"
    {
        header dictionary topoSetDict
        echo "actions ({ name air; type cellZoneSet; action new; source boxToCell; box (0 0 0) (0.15 1 1); }"
        echo "    { name wall; type cellZoneSet; action new; source boxToCell; box (0.15 0 0) (1 1 1); });"
    } > system/topoSetDict
    topoSet > log
    splitMeshRegions -cellZones -overwrite > log
    rm -rf constant/polyMesh 0/* system/air system/wall
    for region in air wall
    do
        mkdir -p 0/$region system/$region
        cp system/fv* system/$region
        {
            header dictionary transportProperties
            echo "DT DT [0 2 -1 0 0 0 0] 0.1;"
        } > constant/transportProperties
        {
            header volScalarField T
            echo "dimensions [0 0 0 1 0 0 0]; internalField uniform 300;"
            echo 'boundaryField { "(left|right)" { type fixedValue; value uniform 350; }'
            echo '    others { type zeroGradient; } ".*_to_.*" { type fixedValue; value uniform 310; } }'
        } > 0/$region/T
        postProcess -region $region -func writeCellCentres -time 0 > log
        rm -f 0/$region/C[xyz]
    done
    rm -f 0/wall/C
    end
}

cavity cavity ascii off
cavity cavity_binary binary off
cavity cavity_gz ascii on
plate
moving
cells
regions
[ -f expect.py ] && ./expect.py
