# SPDX-License-Identifier: Apache-2.0
"""A small case file with names and values of every kind."""

import json

STREAMS = "appModel.FlowSheetObjects.Streams"
UNITS = "appModel.FlowSheetObjects.UnitOps"


def real(value, quantity="", state="specified", **spec):
    if quantity:
        spec["quantity"] = quantity
    return {"spec": {"kind": "real", **spec}, "value": value, "state": state}


def of_kind(kind, value, **spec):
    return {"spec": {"kind": kind, **spec}, "value": value, "state": "specified"}


def array(dimensions, values):
    """Dimensions are (naming, labels) pairs, or a count of elements that have no names."""
    described = [{"count": d} if isinstance(d, int) else
                 {"count": len(d[1]), "naming": d[0], "labels": d[1]} for d in dimensions]
    return {"spec": {"kind": "real", "dimensions": described},
            "values": values, "state": "specified"}


def stream(name, temperature, **more):
    return {"name": name, "type": "MaterialStreamObject", "status": "ok",
            "variables": {"Temperature": real(temperature, "Temperature"),
                          "Pressure": real(100, "Pressure", "calculated"),
                          "Vapour Fraction": real(0.5), **more}}


def small_case():
    odd = {
        "Notes": of_kind("text", "first line\nsecond line"),
        "Word": of_kind("text", "3.50"),
        "Unset": real(None, "Pressure", "missing"),
        "Mode": of_kind("enumeration", "Slow", options=["Fast", "Slow"]),
        "A & B": real(1.5),
        "Low <": real(2.5),
        "Dot.ted": real(3.5),
        "Say \"so\"": real(4.5),
        "Third": real(1 / 3),
    }
    unit = {"name": "Mixer 1", "type": "MixerOpObject", "status": "warning",
            "variables": {"Inlet": of_kind("attachment", "Feed 1"),
                          "Note": {"spec": {"kind": "message"}}}}
    return {"format": "casehost case", "version": 1, "name": "small", "title": "", "source": "own",
            "recorded": True, "online": True, "unitSet": 0,
            "flowsheet": {"objects": [stream("Feed 1", 25, **odd), stream("Feed.2", -40),
                                      stream("Größe", 300), unit]}}


def array_case():
    """One stream with arrays of every naming: short, long, of two dimensions."""
    compounds = ("text", ["Methane", "n-Butane", "A.b", "Methane"])
    arrays = {"Fractions": array([compounds], [0.5, 0.25, 0.125, 0.0625]),
              "Twelve": array([12], list(range(12))),
              "Thirteen": array([13], list(range(13))),
              "Phases": array([("enumeration", ["Vapour", "Liquid"]), compounds],
                              [n / 8 for n in range(8)])}
    case = small_case()
    case["flowsheet"]["objects"] = [stream("Feed", 25, **arrays)]
    return case


def write_case(folder, name, case):
    path = folder / name
    path.write_text(json.dumps(case, ensure_ascii=False), encoding="utf-8")
    return path


def write_small_case(folder):
    return write_case(folder, "small.json", small_case())
