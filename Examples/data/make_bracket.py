#!/usr/bin/env python3
"""Writes bracket.inp: an L-shaped steel bracket with an aluminium pad, pressed down at its tip beyond yield.

The upright leg is fixed at its back; the pad on the arm's tip carries the pressure. Millimetres, newtons, megapascals.
Solve it with `ccx bracket` (Debian's calculix-ccx); bracket.frd beside this file came out of that.
"""

SIZE = 5.0  # edge length of an element, mm
DEPTH = 2  # elements across the width (y)

# Boxes of elements as (material, x from, x to, z from, z to), in elements.
BOXES = [
    ("STEEL", 0, 2, 0, 12),  # upright leg
    ("STEEL", 2, 14, 0, 2),  # arm
    ("ALUMINIUM", 11, 14, 2, 3),  # pad
]

nodes = {}  # position on the half-element grid -> number


def node(i, j, k):
    return nodes.setdefault((i, j, k), len(nodes) + 1)


# Local nodes of C3D20R on the half-element grid: bottom corners, top corners, bottom mids, top mids, upright mids.
CORNERS = [(0, 0, 0), (2, 0, 0), (2, 2, 0), (0, 2, 0), (0, 0, 2), (2, 0, 2), (2, 2, 2), (0, 2, 2)]
EDGES = [(0, 1), (1, 2), (2, 3), (3, 0), (4, 5), (5, 6), (6, 7), (7, 4), (0, 4), (1, 5), (2, 6), (3, 7)]
LOCAL = CORNERS + [tuple((CORNERS[a][n] + CORNERS[b][n]) // 2 for n in range(3)) for a, b in EDGES]

elements = {"STEEL": [], "ALUMINIUM": []}
pressed = []
number = 0
for material, x0, x1, z0, z1 in BOXES:
    for z in range(z0, z1):
        for y in range(DEPTH):
            for x in range(x0, x1):
                number += 1
                elements[material].append((number, [node(2 * x + i, 2 * y + j, 2 * z + k) for i, j, k in LOCAL]))
                if material == "ALUMINIUM":
                    pressed.append(number)


def rows(values, width=12):
    return ",\n".join(", ".join(str(v) for v in values[i : i + width]) for i in range(0, len(values), width))


with open("bracket.inp", "w", encoding="ascii") as deck:
    deck.write("** Written by make_bracket.py\n*HEADING\nBracket pressed at its tip\n*NODE, NSET=ALL\n")
    for (i, j, k), n in nodes.items():
        deck.write(f"{n}, {i * SIZE / 2:g}, {j * SIZE / 2:g}, {k * SIZE / 2:g}\n")
    for material, listed in elements.items():
        deck.write(f"*ELEMENT, TYPE=C3D20R, ELSET={material}\n")
        for n, connectivity in listed:
            deck.write(f"{n}, {rows([str(c) for c in connectivity])}\n")
    deck.write("*NSET, NSET=WALL\n" + rows([n for (i, _, _), n in nodes.items() if i == 0]) + "\n")
    deck.write("*ELSET, ELSET=PRESSED\n" + rows(pressed) + "\n")
    deck.write(
        """*MATERIAL, NAME=STEEL
*ELASTIC
210000, 0.3
*PLASTIC
235, 0
400, 0.2
*MATERIAL, NAME=ALUMINIUM
*ELASTIC
70000, 0.33
*SOLID SECTION, ELSET=STEEL, MATERIAL=STEEL
*SOLID SECTION, ELSET=ALUMINIUM, MATERIAL=ALUMINIUM
*BOUNDARY
WALL, 1, 3
*STEP, NLGEOM
*STATIC, DIRECT
0.2, 1
*DLOAD
PRESSED, P2, 8
*NODE FILE
U, RF
*EL FILE
S, PEEQ
*NODE PRINT, NSET=WALL, TOTALS=ONLY
RF
*END STEP
"""
    )
