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


def write_small_case(folder):
    path = folder / "small.json"
    path.write_text(json.dumps(small_case(), ensure_ascii=False), encoding="utf-8")
    return path
