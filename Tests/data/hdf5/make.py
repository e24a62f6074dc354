#!/usr/bin/python3
"""Makes the files here: HDF5 that has all that its format has and our formats' programs may use. Needs h5py and netCDF4."""

import h5py
import netCDF4
import numpy as np


def fill_plain(file):
    """What files of any version can have."""
    group = file.create_group("group")
    group.create_group("inner/most")
    file["again"] = group
    group["loop"] = file["/"]
    file["soft"] = h5py.SoftLink("/group/inner")
    file["away"] = h5py.ExternalLink("plain.h5", "/group")
    file["nowhere"] = h5py.ExternalLink("missing.h5", "/")
    numbers = np.arange(12.0).reshape(3, 4)
    file["contiguous"] = numbers
    file["scalar"] = 7
    file["none"] = h5py.Empty("f4")
    file.create_dataset("unwritten", (5,), "i4")
    file.create_dataset("without", (0, 3), "f8", maxshape=(None, 3))
    file.create_dataset("filled", (9,), "f4", fillvalue=-1.5, chunks=(4,))
    compact = h5py.h5p.create(h5py.h5p.DATASET_CREATE)
    compact.set_layout(h5py.h5d.COMPACT)
    space = h5py.h5s.create_simple((3,))
    data = h5py.h5d.create(file.id, b"compact", h5py.h5t.NATIVE_INT32, space, compact)
    data.write(h5py.h5s.ALL, h5py.h5s.ALL, np.arange(3, dtype="i4"))
    external = h5py.h5p.create(h5py.h5p.DATASET_CREATE)
    external.set_external(b"values.raw", 0, 24)
    h5py.h5d.create(file.id, b"external", h5py.h5t.NATIVE_DOUBLE, space, external)
    for name, options in {
        "chunked": {},
        "gzip": {"compression": "gzip"},
        "all": {"compression": "gzip", "shuffle": True, "fletcher32": True},
        "sums": {"fletcher32": True},
        "scaled": {"scaleoffset": 2},
        "lzf": {"compression": "lzf"},
        "growing": {"maxshape": (None, 4)},
        "growing_both": {"maxshape": (None, None), "compression": "gzip"},
        "growing_plain": {"maxshape": (None, None)},
    }.items():
        file.create_dataset("chunks/" + name, data=numbers, chunks=(2, 3), **options)
    file.create_dataset("chunks/single", data=numbers, chunks=(3, 4))
    file.create_dataset("chunks/single_gzip", data=numbers, chunks=(3, 4), compression="gzip")
    early = h5py.h5p.create(h5py.h5p.DATASET_CREATE)
    early.set_chunk((2,))
    early.set_alloc_time(h5py.h5d.ALLOC_TIME_EARLY)
    h5py.h5d.create(file["chunks"].id, b"early", h5py.h5t.NATIVE_INT32, space, early)
    virtual = h5py.VirtualLayout((6, 4), "f8")
    virtual[:3] = h5py.VirtualSource(".", "contiguous", (3, 4))
    if file.libver[0] == "latest":
        file.create_virtual_dataset("virtual", virtual)


def fill_types(file):
    """Types of values and of attributes."""
    inner = np.dtype([("x", "f4"), ("y", ">i2", (2, 3))])
    outer = np.dtype([("n", "u1"), ("in", inner), ("text", "S7"), ("list", h5py.vlen_dtype(np.int16))])
    fixed = np.dtype([("n", "u1"), ("in", inner), ("text", "S7")])
    words = h5py.string_dtype()
    lists = np.array([np.arange(4), np.arange(2)], dtype=object)
    file["type"] = outer
    values = {
        "records": (np.zeros(2, fixed), fixed),
        "words": (np.array(["one", "", "three"], dtype=object), words),
        "word": ("alone", words),
        "letters": (np.array([b"ab", b"c"]), "S2"),
        "lists": (lists, h5py.vlen_dtype(np.int32)),
        "colours": (np.array([1, 0]), h5py.enum_dtype({"RED": 0, "GREEN": 1}, "i1")),
        "flags": (np.array([True, False]), "?"),
        "half": (np.float16(1.5), "f2"),
        "long": (np.longdouble(1.5), np.longdouble),
        "complex": (1 + 2j, "c16"),
        "raw": (np.array([b"\1\2"], "V2"), "V2"),
        "objects": (np.array([file["type"].ref], h5py.ref_dtype), h5py.ref_dtype),
    }
    data = file.create_dataset("host", data=np.arange(3))
    for name, (value, kind) in values.items():
        data.attrs.create(name, value, dtype=kind)
        file.create_dataset(name, data=value, dtype=kind)
    data.attrs.create("matrix", np.ones((1, 2, 2)), shape=(1, 2, 2), dtype=np.dtype((np.float64, (2, 2))))
    data.attrs["region"] = file["host"].regionref[0:2]
    data.attrs["empty"] = h5py.Empty("i4")
    typed = h5py.h5s.create(h5py.h5s.SCALAR)
    h5py.h5a.create(data.id, b"committed", file["type"].id, typed)
    h5py.h5d.create(file.id, b"committed", file["type"].id, typed)


def fill_many(file, count, chunks):
    """Many links and attributes, and indexes of many chunks."""
    group = file.create_group("many", track_order=True)
    for i in range(count):
        group.create_group(f"a group with a long name {i:05}")
    data = file.create_dataset("attributed", data=1, track_order=True)
    for i in range(40):
        data.attrs[f"attribute {i}"] = np.arange(i)
    data.attrs["large"] = np.arange(600.0)
    for name, most in {"fixed": (chunks,), "extended": (None,)}.items():
        file.create_dataset(name, data=np.zeros(chunks, "u1"), chunks=(1,), maxshape=most)
    file.create_dataset("treed", data=np.zeros((chunks // 10, 2), "u1"), chunks=(1, 1), maxshape=(None, None))


for name, version, options in (
    ("plain.h5", "earliest", {}),
    ("latest.h5", "latest", {"track_order": True}),
    ("behind.h5", "earliest", {"userblock_size": 512}),
    ("pages.h5", "latest", {"fs_strategy": "page", "fs_persist": True, "fs_page_size": 512}),
):
    with h5py.File(name, "w", libver=version, **options) as file:
        if name != "behind.h5":
            fill_plain(file)
        if name != "pages.h5":
            fill_types(file)
for name, version, count, chunks in ("many.h5", "latest", 120, 1100), ("many_old.h5", "earliest", 30, 70):
    with h5py.File(name, "w", libver=version) as file:
        fill_many(file, count, chunks)
with netCDF4.Dataset("netcdf.nc", "w") as file:
    file.createDimension("time", None)
    file.createDimension("node", 5)
    file.title = "a title"
    file.createVariable("u", "f8", ("time", "node"), zlib=True)[0] = np.arange(5)
    file.createVariable("names", str, ("node",))[:] = np.array(["a", "b", "", "d", "e"], dtype=object)
    file.createVariable("s", "i2", ("node",), fill_value=-9)[:] = 1
    file.createGroup("inner").createVariable("v", "f4", ("node",))[:] = 2
    file.createCompoundType(np.dtype([("a", "f4"), ("b", "i2")]), "pair")
