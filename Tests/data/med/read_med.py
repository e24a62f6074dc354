"""Tells as JSON what a MED file holds, read with h5py alone. See make_med.sh.

Values stand by the numbers of nodes and elements, so that nothing has to be known of the order of an element's nodes.
"""

import json
import sys

import h5py

CELLS = "PO1 SE2 SE3 TR3 QU4 TR6 TR7 QU8 QU9 TE4 PY5 PE6 HE8 T10 P13 P15 P18 H20 H27".split()
NODE_COUNTS = dict(zip(CELLS, [1, 2, 3, 3, 4, 6, 7, 8, 9, 4, 5, 6, 8, 10, 13, 15, 18, 20, 27]))
CENTRES = {"TR7": 1, "QU9": 1, "P18": 3, "H27": 7}

# What each field's components become, by hand: "-" stands for a component that is 0.
TENSOR = "SIXX SIYY SIZZ SIXY SIYZ SIXZ"
RESULTS = {
    "CELL": {"CELL": "VAL"},
    "CELLNODE": {"CELLNODE": "VAL"},
    "RESU____DEPL": {
        "RESU____DEPL": "DX DY DZ",
        "RESU____DEPL.DRX": "DRX",
        "RESU____DEPL.DRY": "DRY",
        "RESU____DEPL.DRZ": "DRZ",
    },
    "RESU____VITE": {"RESU____VITE": "DX DY DZ"},
    "RESU____SIGM_ELNO": {"RESU____SIGM_ELNO": TENSOR},
    "RESU____SIEF_ELGA": {},
    "RESU____TEMP": {"RESU____TEMP": "TEMP"},
    "MATERIAL": {"MATERIAL": "NUMBER"},
    "MODE____DEPL": {"MODE____DEPL": "DX DY -"},
    "MODE____SIGM_ELNO": {"MODE____SIGM_ELNO": "SIXX SIYY SIZZ SIXY - -"},
    "FLUX": {"FLUX": "FLUX FLUY FLUZ"},
    "COUNT": {"COUNT.A": "A", "COUNT.2": ""},
    "PLAIN": {"PLAIN": "#0 #1 #2"},
    "GRID": {},
    "moved": {"moved": "#0 #1 #2"},
    "heat": {"heat": "#0"},
    "load": {"load": "#0"},
    "Velocity": {"Velocity": "#0 #1 #2"},
    "Pressure": {"Pressure": "#0"},
}


def text(value):
    return (value.decode() if isinstance(value, bytes) else str(value)).rstrip("\0 ")


def rows(dataset, count, width):
    """MED keeps all first ones, then all second ones."""
    flat = dataset[()].ravel()
    return [[flat[k * count + i].item() for k in range(width)] for i in range(count)]


class Mesh:
    def __init__(self, file, name, prefix):
        self.name = name
        group = file["ENS_MAA"][name]
        dimension = int(group.attrs["ESP"])
        step = group[sorted(group.keys())[0]]
        nodes = step["NOE"]
        count = int(nodes["COO"].attrs["NBR"])
        self.nodes = nodes["NUM"][()].tolist() if "NUM" in nodes else list(range(1, count + 1))
        self.coordinates = [row + [0.0] * (3 - dimension) for row in rows(nodes["COO"], count, dimension)]
        self.cells = {}
        groups = {}
        for kind in file["FAS"][name].get("ELEME", {}).values() if name in file["FAS"] else []:
            names = [text(bytes(row.tolist())) for row in kind["GRO"]["NOM"][()]] if "GRO" in kind else []
            groups[int(kind.attrs["NUM"])] = ", ".join(names)
        number = 1
        for cell in CELLS:
            if cell not in step["MAI"]:
                continue
            block = step["MAI"][cell]
            count = int(block["NOD"].attrs["NBR"])
            nodes_of = rows(block["NOD"], count, NODE_COUNTS[cell])
            ids = block["NUM"][()].tolist() if "NUM" in block else list(range(number, number + count))
            number += count
            families = block["FAM"][()].tolist() if "FAM" in block else [0] * count
            parts = [prefix + groups[f] if groups.get(f) else name for f in families]
            self.cells[cell] = (ids, [[self.nodes[n - 1] for n in nodes] for nodes in nodes_of], parts)

    def parts(self):
        coordinates = dict(zip(self.nodes, self.coordinates))
        parts = {}
        for cell, (ids, nodes_of, names) in self.cells.items():
            for number, nodes, name in zip(ids, nodes_of, names):
                part = parts.setdefault(name, {"nodes": {}, "elements": {}})
                nodes = nodes[: len(nodes) - CENTRES.get(cell, 0)]
                part["elements"][number] = nodes
                part["nodes"].update({n: coordinates[n] for n in nodes})
        return parts


def state_name(step, unit):
    number, iteration = int(step.attrs["NDT"]), int(step.attrs["NOR"])
    if number == -1:
        return "Without step"
    name = f"Step {number}" + (f", iteration {iteration}" if iteration not in (-1, number) else "")
    return f"{name}, {'frequency' if unit == 'Hz' else 'time'} {step.attrs['PDT']:g}"


def pick(row, components, wanted):
    def column(name):
        return int(name[1:]) if name.startswith("#") else components.index(name)

    return [0.0 if name == "-" else row[column(name)] for name in (wanted.split(" ") if wanted else [""])]


def items(file, entity, mesh, components, wanted):
    """(mapping, {number: values or {node: values}}) of one entity's values in one step."""
    kind, _, cell = entity.partition(".")
    found = {}
    for profile, values in file.items():
        count, points = int(values.attrs["NBR"]), int(values.attrs["NGA"])
        flat = values["CO"][()].ravel()
        names = values.file["PROFILS"][profile]["PFL"][()].tolist() if "INTERNAL" not in profile else None
        at_nodes = bool(cell) and (kind == "NOE" or text(values.attrs["GAU"]) == "MED_GAUSS_ELNO")
        for i in range(count):
            index = names[i] - 1 if names else i
            data = [
                pick([flat[(k * count + i) * points + p].item() for k in range(len(components))], components, wanted)
                for p in range(points)
            ]
            if not cell:
                found[mesh.nodes[index]] = data[0]
            elif at_nodes:
                nodes = mesh.cells[cell][1][index]
                found[mesh.cells[cell][0][index]] = dict(zip(nodes[: len(nodes) - CENTRES.get(cell, 0)], data))
            else:
                found[mesh.cells[cell][0][index]] = data[0]
        mapping = "node" if not cell else "element node" if at_nodes else "element"
    return mapping, found


def main(filename):
    with h5py.File(filename, "r") as file:
        names = sorted(file["ENS_MAA"].keys())
        meshes = {}
        for name in names:
            if int(file["ENS_MAA"][name].attrs["TYP"]) == 0:
                meshes[name] = Mesh(file, name, f"{name}: " if len(names) > 1 else "")
        states = {}
        for name, field in file["CHA"].items() if "CHA" in file else []:
            count = int(field.attrs["NCO"])
            raw = field.attrs["NOM"].decode() if isinstance(field.attrs["NOM"], bytes) else str(field.attrs["NOM"])
            components = [raw[16 * i : 16 * i + 16].rstrip("\0 ") for i in range(count)]
            for step in field.values():
                for result, wanted in RESULTS[name].items():
                    for entity, values in step.items():
                        mapping, found = items(values, entity, meshes[text(field.attrs["MAI"])], components, wanted)
                        state = states.setdefault(state_name(step, text(field.attrs["UNT"])), {})
                        state.setdefault(f"{result} per {mapping}", {"mesh": text(field.attrs["MAI"]), "values": {}})[
                            "values"
                        ].update(found)
        parts = {}
        for mesh in meshes.values():
            for part, contents in mesh.parts().items():
                parts[part] = dict(contents, mesh=mesh.name)
        print(json.dumps({"parts": parts, "states": states}, separators=(",", ":")))


main(sys.argv[1])
