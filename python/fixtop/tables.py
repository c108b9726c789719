# SPDX-License-Identifier: Apache-2.0
"""Tables of a case as data frames: names of objects as the index, units in the names of columns."""

from __future__ import annotations

import dataclasses
import math
import warnings
from typing import TYPE_CHECKING, Any, Iterable, Optional

from . import _core
from .errors import LeftOut, Refused

if TYPE_CHECKING:
    import pandas

    from .case import Case

Row = tuple[str, _core.Node]

# Heading and path of each column, from the object of its row.
STREAM_COLUMNS = (
    ("Vapor fraction", "VaporFraction"),
    ("Temperature", "Temperature"),
    ("Pressure", "Pressure"),
    ("Molar flow", "MolarFlow"),
    ("Mass flow", "MassFlow"),
    ("Volume flow", "VolumeFlow"),
    ("Heat flow", "HeatFlow"),
    ("From", "UpstreamUnitOperation"),
    ("To", "DownstreamUnitOperation"),
)
ENERGY_STREAM_COLUMNS = (
    ("Heat flow", "HeatFlow"),
    ("From", "UpstreamUnitOperation"),
    ("To", "DownstreamUnitOperation"),
)
UNIT_OPERATION_COLUMNS = (
    ("Duty", "Duty[(type)=Real]"),
    ("Condenser duty", "CondenserDuty"),
    ("Reboiler duty", "ReboilerDuty"),
    ("Power", "Power"),
    ("Pressure drop", "PressureDrop"),
    ("Inlet temperature", "InletTemperature"),
    ("Outlet temperature", "OutletTemperature"),
    ("Outlet pressure", "OutletPressure"),
    ("Outlet vapor fraction", "OutletVaporFraction"),
    ("Hot outlet temperature", "Hot.OutletTemperature"),
    ("Cold outlet temperature", "Cold.OutletTemperature"),
    ("Vessel temperature", "Flash.Temperature"),
    ("Vessel pressure", "Flash.Pressure"),
    ("Adiabatic efficiency", "AdiabaticEfficiency"),
)
STAGE_COLUMNS = (
    ("Temperature", "Temperature"),
    ("Pressure", "Pressure"),
    ("Vapor flow", "VaporMolarFlow"),
    ("Liquid flow", "LiquidMolarFlow"),
)
_FRACTIONS = {"mole": "MoleFraction", "mass": "MassFraction"}


def _read(node: Optional[_core.Node]) -> tuple[Any, str]:
    """Value and unit; nothing where there is no node."""
    if node is None:
        return None, ""
    reading = node.read()
    return reading.value, reading.unit


def _cells(rows: Iterable[Row], path: str) -> list[tuple[Any, str]]:
    pattern = _core.Pattern(path)
    return [_read(node.first(pattern)) for _, node in rows]


def _objects(cells: Iterable[Any]) -> Any:
    """An array of objects: numpy would make plain numbers of quantities."""
    import numpy

    listed = list(cells)
    array = numpy.empty(len(listed), dtype=object)
    for place, cell in enumerate(listed):
        array[place] = cell
    return array


def _column(heading: str, cells: list[tuple[Any, str]], quantities: bool) -> tuple[str, Any]:
    """The heading with the unit of all cells; where they differ each cell has its own."""
    values = [value for value, _ in cells]
    units = {unit for value, unit in cells if value is not None and unit}
    if quantities and units:
        from .quantities import quantity

        return heading, _objects(value if value is None else quantity(value, unit) for value, unit in cells)
    if len(units) > 1:
        return heading, [None if value is None else f"{value} {unit}".rstrip() for value, unit in cells]
    if any(isinstance(value, str) for value in values):
        return heading, ["" if value is None else value for value in values]
    numbers = [math.nan if value is None else float(value) for value in values]
    return f"{heading} [{units.pop()}]" if units else heading, numbers


def _frame(
    rows: list[Row],
    columns: Iterable[tuple[str, str]],
    quantities: bool = False,
    first: Optional[dict[str, list[Any]]] = None,
    whole: bool = False,
) -> "pandas.DataFrame":
    """Columns for which no object has anything are left out, unless `whole`."""
    import pandas

    table: dict[str, Any] = dict(first or {})
    for heading, path in columns:
        cells = _cells(rows, path)
        if whole or any(value is not None and value != "" for value, _ in cells):
            name, values = _column(heading, cells, quantities)
            table[name] = values
    index = pandas.Index([name for name, _ in rows], name="Name", dtype=object)
    return pandas.DataFrame(table, index=index)


def streams(case: "Case", units: str, quantities: bool) -> "pandas.DataFrame":
    with case.in_units(units):
        return _frame(list(case.objects("Stream")), STREAM_COLUMNS, quantities)


def energy_streams(case: "Case", units: str, quantities: bool) -> "pandas.DataFrame":
    with case.in_units(units):
        return _frame(list(case.objects("HeatStream")), ENERGY_STREAM_COLUMNS, quantities)


def unit_operations(case: "Case", units: str, quantities: bool) -> "pandas.DataFrame":
    with case.in_units(units):
        rows = list(case.objects("UnitOperation"))
        _left_out(case, (name for name, _ in rows))
        return _frame(
            rows, UNIT_OPERATION_COLUMNS, quantities, {"Class": [node.class_name for _, node in rows]}
        )


def _fractions(rows: Iterable[Row], list_path: str, member: str, index_name: str) -> "pandas.DataFrame":
    import pandas

    pattern, fraction = _core.Pattern(list_path), _core.Pattern(member)
    table: dict[str, dict[str, float]] = {}
    names: dict[str, None] = {}
    for name, node in rows:
        table[name] = {}
        for component in node.find(pattern):
            key = component.key
            names[key] = None
            found = component.first(fraction)
            table[name][key] = math.nan if found is None else found.number()
    frame = pandas.DataFrame.from_dict(table, orient="index", columns=None, dtype=float)
    return frame.reindex(index=list(table), columns=list(names)).rename_axis(index_name)


def compositions(case: "Case", basis: str) -> "pandas.DataFrame":
    if basis not in _FRACTIONS:
        raise ValueError(f"no such basis: {basis}; expected {', '.join(_FRACTIONS)}")
    return _fractions(case.objects("Stream"), "Composition.Component", _FRACTIONS[basis], "Name")


class Column:
    """A distillation column: its stages as tables."""

    def __init__(self, case: "Case", name: str, node: _core.Node):
        self.case, self.name, self.node = case, name, node

    def __repr__(self) -> str:
        return f"<Column {self.name}>"

    def _stages(self) -> list[Row]:
        return [(stage.key, stage) for stage in self.node.find(_core.Pattern("Stage"))]

    def profile(self, units: str = "", quantities: bool = False) -> "pandas.DataFrame":
        """Temperature, pressure, vapor and liquid flow of each stage.

        Raises Refused for a unit operation without stages.
        """
        with self.case.in_units(units):
            stages = self._stages()
            if not stages:
                raise Refused(self.node.path, "has no stages")
            return _frame(stages, STAGE_COLUMNS, quantities).rename_axis("Stage")

    def vapor(self) -> "pandas.DataFrame":
        """Mole fractions in the vapor that leaves each stage."""
        return _fractions(self._stages(), "VaporFrom.Composition", "MoleFraction", "Stage")

    def liquid(self) -> "pandas.DataFrame":
        """Mole fractions in the liquid that leaves each stage."""
        return _fractions(self._stages(), "LiquidFrom.Composition", "MoleFraction", "Stage")


# ---- Balances ----


@dataclasses.dataclass
class _Flows:
    """Sums of what goes in, or out; NaN as soon as a part is not known."""

    streams: list[str] = dataclasses.field(default_factory=list)
    mass: float = 0
    heat: float = 0
    energy: float = 0
    known_energy: float = 0  # of the parts that are known

    def add_material(self, name: str, mass: float, heat: float) -> None:
        self.streams.append(name)
        self.mass += mass
        if mass != 0:  # without flow there is no enthalpy
            self.heat += heat

    def add_energy(self, heat: float) -> None:
        self.energy += heat
        self.known_energy += 0 if math.isnan(heat) else heat


def _error(into: float, out: float) -> float:
    most = max(abs(into), abs(out))
    return 0.0 if most == 0 else (into - out) / most


def _number(node: _core.Node, pattern: _core.Pattern) -> float:
    found = node.first(pattern)
    return math.nan if found is None else found.number()


_MASS, _HEAT, _WITH_FORMATION = (_core.Pattern(path) for path in ("MassFlow", "HeatFlow", "TotalEnergyFlow"))
_FROM, _TO = (_core.Pattern(path) for path in ("UpstreamUnitOperation", "DownstreamUnitOperation"))

# What a unit operation adds to its streams (1) or takes from them (-1), with the member that says which
# and its word. It counts where no energy stream tells of it; a duty of an exchanger stays inside.
_DUTIES: dict[str, tuple[tuple[str, int, str, str], ...]] = {
    "QSIHeaterCooler": (("Duty", 1, "HeaterOrCooler", "Heater"), ("Duty", -1, "HeaterOrCooler", "Cooler")),
    "QSICompressor": (
        ("Power", 1, "CompressorOrExpander", "Compressor"),
        ("Power", -1, "CompressorOrExpander", "Expander"),
    ),
    "QSIPump": (("Power", 1, "", ""),),
    "QSISeparator": (("Duty", 1, "", ""),),
    "QSIConversionReactor": (("Duty", 1, "", ""),),
    "QSIEquilibriumReactor": (("Duty", 1, "", ""),),
    "QSIGibbsReactor": (("Duty", 1, "", ""),),
    "QSIDistillationColumn": (("ReboilerDuty", 1, "", ""), ("CondenserDuty", -1, "", "")),
}
# What is heat of formation before a reaction is heat behind it.
_REACTORS = ("QSIConversionReactor", "QSIEquilibriumReactor", "QSIGibbsReactor")


@dataclasses.dataclass
class _Balance:
    """What goes through a unit operation; heat without, and with, that of formation."""

    into: _Flows = dataclasses.field(default_factory=_Flows)
    out: _Flows = dataclasses.field(default_factory=_Flows)
    formed_into: _Flows = dataclasses.field(default_factory=_Flows)
    formed_out: _Flows = dataclasses.field(default_factory=_Flows)
    has_energy_stream: bool = False

    def add_material(self, name: str, node: _core.Node, goes_in: bool) -> None:
        mass = _number(node, _MASS)
        sides = (self.into, self.formed_into) if goes_in else (self.out, self.formed_out)
        for side, path in zip(sides, (_HEAT, _WITH_FORMATION)):
            side.add_material(name, mass, _number(node, path))

    def add_energy(self, node: _core.Node, goes_in: bool) -> None:
        self.has_energy_stream = True
        for side in (self.into, self.formed_into) if goes_in else (self.out, self.formed_out):
            side.add_energy(_number(node, _HEAT))

    def add_sums(self, duties: Iterable[float]) -> None:
        """Heat that is added, or taken where it is negative."""
        for duty in duties:
            for side in (self.into, self.formed_into) if duty > 0 else (self.out, self.formed_out):
                side.add_energy(abs(duty))

    def row(self, class_name: str) -> list[Any]:
        into, out = (self.formed_into, self.formed_out) if class_name in _REACTORS else (self.into, self.out)
        has_material = bool(into.streams or out.streams)
        errors = [_error(into.mass, out.mass), _error(into.heat + into.energy, out.heat + out.energy)]
        return [
            ", ".join(into.streams),
            ", ".join(out.streams),
            into.mass,
            out.mass,
            into.heat,
            out.heat,
            into.energy,
            out.energy,
        ] + (errors if has_material else [math.nan, math.nan])


def _complete_energy(node: _core.Node, its: _Balance, overall: Optional[_Balance]) -> None:
    """What no energy stream tells, or one without a value, the unit operation tells itself."""
    is_known = not math.isnan(its.into.energy + its.out.energy)
    if its.has_energy_stream and is_known:
        return
    told = its.into.known_energy - its.out.known_energy
    duties = _duties(node)
    rest = [sum(duties) - told] if duties and not is_known else duties if is_known else [math.nan]
    for side in (its.into, its.formed_into, its.out, its.formed_out):
        side.energy = side.known_energy
    for balance in (its, overall):
        if balance is not None:
            balance.add_sums(rest)


def _left_out(case: "Case", names: Iterable[str]) -> None:
    """Warns of unit operations at the ends of streams that have no class, and so no row."""
    there = {*names, *(name for name, _ in case.objects("SubFlowsheet"))}
    ends: dict[str, None] = {}
    for kind in ("Stream", "HeatStream"):
        for prefix, _, _, *both in _ends(case, kind):
            ends.update({prefix + end: None for end in both if end and prefix + end not in there})
    if ends:
        text = f"not in the neutral view, and left out: {', '.join(ends)}"
        warnings.warn(text, LeftOut, stacklevel=4)


def _duties(node: _core.Node) -> list[float]:
    """What a unit operation adds to its streams; negative for what it takes from them."""
    found = []
    for path, sign, kind, word in _DUTIES.get(node.class_name, ()):
        if kind and node.member(kind).value != word:
            continue
        duty = _number(node, _core.Pattern(f"{path}[(type)=Real]"))
        if not math.isnan(duty):
            found.append(sign * duty)
    return found


def _ends(case: "Case", kind: str) -> Iterable[tuple[str, str, _core.Node, str, str]]:
    """Each stream with the flowsheet's prefix, its own name, and the unit operations at its ends."""
    for name, node in case.objects(kind):
        prefix = name[: len(name) - len(node.key)]
        source, target = (str(_read(node.first(path))[0] or "") for path in (_FROM, _TO))
        yield prefix, node.key, node, source, target


def _balances(case: "Case") -> tuple[dict[str, _Balance], _Balance]:
    """Of each unit operation by name, and of the main flowsheet."""
    of: dict[str, _Balance] = {}
    overall = _Balance()
    for kind in ("Stream", "HeatStream"):
        for prefix, name, node, source, target in _ends(case, kind):
            for end, goes_in in ((target, True), (source, False)):
                # What ends nowhere in the main flowsheet comes from outside, or goes there.
                if end:
                    balance, inward = of.setdefault(prefix + end, _Balance()), goes_in
                elif not prefix:
                    balance, inward = overall, not goes_in
                else:
                    continue
                if kind == "Stream":
                    balance.add_material(name, node, inward)
                elif balance is not overall or not math.isnan(_number(node, _HEAT)):
                    balance.add_energy(node, inward)
    return of, overall


def balance(case: "Case", units: str) -> "pandas.DataFrame":
    import pandas

    with case.in_units(units):
        of, overall = _balances(case)
        rows, unit_of = {}, _flow_units(case)
        for name, node in case.objects("UnitOperation"):
            its = of.get(name, _Balance())
            _complete_energy(node, its, None if "/" in name else overall)
            rows[name] = [node.class_name, *its.row(node.class_name)]
        _left_out(case, rows)
        # Where anything reacts, heat of formation counts as a whole.
        reactors = [row[0] for row in rows.values() if row[0] in _REACTORS]
        rows["Overall"] = ["", *overall.row(reactors[0] if reactors else "")]
    mass, heat = (f" [{unit}]" if unit else "" for unit in unit_of)
    columns = [
        "Class",
        "Feeds",
        "Products",
        f"Mass in{mass}",
        f"Mass out{mass}",
        f"Heat in{heat}",
        f"Heat out{heat}",
        f"Energy in{heat}",
        f"Energy out{heat}",
        "Mass error",
        "Energy error",
    ]
    return pandas.DataFrame.from_dict(rows, orient="index", columns=columns).rename_axis("Name")


def _flow_units(case: "Case") -> tuple[str, str]:
    for _, node in case.objects("Stream"):
        return _read(node.first(_MASS))[1], _read(node.first(_HEAT))[1]
    return "", ""
