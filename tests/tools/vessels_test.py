# SPDX-License-Identifier: Apache-2.0
"""Separators, mixers, tees and the analyses of streams in the neutral view of the built-in case."""

import unittest

from support import DONE, ProgramTest, run

FLASH = "Flowsheet.UnitOperation(V-100).Flash."
ENVELOPE = "Flowsheet.PhaseEnvelope(Sales Gas Envelope)."
BOILING = "Flowsheet.DistillationCurve(Condensate Curve)."
GAS_CONSTANT = 8.314462618  # kJ/(kmol K)


class Vessels(ProgramTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.case = cls.folder / "solved.json"
        run("solve", "demo", "--save", cls.case)

    def texts(self, *paths):
        return self.check(run("get", self.case, "--neutral", *paths), DONE, err="").lines

    def numbers(self, *paths):
        return [float(text) for text in self.texts(*paths)]

    def test_what_enters_a_separator_leaves_it_by_its_phases(self):
        for flow in ("MolarFlow", "MassFlow", "HeatFlow"):
            feed, vapor, liquid = self.numbers("Flowsheet.Stream(Chilled Gas)." + flow,
                                               FLASH + "Vapor." + flow, FLASH + "Liquid1." + flow)
            self.assertAlmostEqual(feed, vapor + liquid, delta=1e-6 * abs(feed), msg=flow)
        self.assertEqual(["Vapor", "Liquid1"], self.texts(FLASH + "Vapor.Phase", FLASH + "Liquid1.Phase"))

    def test_the_compositions_of_a_flash_are_those_of_its_products(self):
        for phase, stream in (("Vapor", "Cold Gas"), ("Liquid1", "Cold Liquid")):
            component = "(Methane).MoleFraction"
            own, of_product = self.numbers(
                FLASH + phase + "Composition" + component,
                f"Flowsheet.Stream({stream}).Composition.Component" + component)
            self.assertEqual(of_product, own)

    def test_ports_tell_the_streams_of_a_unit_operation(self):
        for unit, ports in (("MIX-100", {"MaterialFeed": ["Raw Gas", "Tail Gas"],
                                         "MaterialProduct": ["Mixed Gas"]}),
                            ("V-100", {"MaterialFeed": ["Chilled Gas"],
                                       "MaterialProduct": ["Cold Gas", "Cold Liquid"]})):
            for side, streams in ports.items():
                paths = [f"Flowsheet.UnitOperation({unit}).{side}#{n}.StreamName"
                         for n in range(len(streams))]
                self.assertEqual(streams, self.texts(*paths))
        self.assertEqual(["Cold Gas"], self.texts("Flowsheet.UnitOperation(V-100).VaporPort.StreamName"))

    def test_a_specified_face_is_never_that_of_another_variable(self):
        drop, duty, heat = (f"Flowsheet.UnitOperation(V-100).{name}(spec_value)"
                            for name in ("PressureDrop", "Duty", "Flash.Temperature"))
        self.assertEqual(["0", "", ""], self.texts(drop, duty, heat))

    def test_the_shares_of_a_tee_are_its_whole_feed(self):
        tee = "Flowsheet.UnitOperation(TEE-100)."
        splits = [f"{tee}Split({stream})." for stream in ("Sales Gas", "Fuel Gas")]
        self.assertEqual([0.95, 0.05], self.numbers(*(split + "FlowRatio" for split in splits)))
        feed, *products = self.numbers(tee + "Fluid.MolarFlow", *(s + "MolarFlow" for s in splits))
        self.assertAlmostEqual(feed, sum(products), delta=1e-9 * feed)

    def test_nozzles_of_a_branched_side_are_told_apart_by_their_streams(self):
        nozzle = "Flowsheet.UnitOperation({}).{}Nozzle({}).Diameter"
        self.assertEqual([0.2, 0.1, 0.2, 0.05],
                         self.numbers(nozzle.format("MIX-100", "Inlet", "Raw Gas"),
                                      nozzle.format("MIX-100", "Inlet", "Tail Gas"),
                                      nozzle.format("TEE-100", "Outlet", "Sales Gas"),
                                      nozzle.format("TEE-100", "Outlet", "Fuel Gas")))

    def test_a_vessel_holds_its_volume(self):
        vessel = "Flowsheet.UnitOperation(V-101)."
        for what in ("Moles", "Mass", "Volume"):
            total, vapor, liquid = self.numbers(
                *(f"{vessel}Holdup.{phase}.{what}" for phase in ("Total", "Vapor", "Liquid1")))
            self.assertAlmostEqual(total, vapor + liquid, delta=1e-3)
        volume, holdup = self.numbers(vessel + "VesselVolume", vessel + "Holdup.Total.Volume")
        self.assertAlmostEqual(volume, holdup, delta=1e-3)

    def test_the_curves_of_an_envelope_meet_at_the_critical_point(self):
        critical = self.numbers(ENVELOPE + "CriticalTemperature", ENVELOPE + "CriticalPressure")
        for curve, last in (("BubblePointCurve", 14), ("DewPointCurve", 19)):
            end = self.numbers(*(f"{ENVELOPE}{curve}({last}).{name}" for name in ("Temperature", "Pressure")))
            self.assertAlmostEqual(critical[0], end[0], delta=0.5, msg=curve)
            self.assertAlmostEqual(critical[1], end[1], delta=0.01 * critical[1], msg=curve)

    def test_the_other_properties_of_dew_points_stand_behind_those_of_bubble_points(self):
        temperature, pressure, volume = self.numbers(
            *(f"{ENVELOPE}DewPointCurve(0).{name}" for name in ("Temperature", "Pressure", "MolarVolume")))
        ideal = GAS_CONSTANT * (temperature + 273.15) / pressure
        self.assertAlmostEqual(ideal, volume, delta=0.02 * ideal)

    def test_cuts_rise_with_what_is_distilled(self):
        percents = [text for text in self.texts(*(f"{BOILING}Cut#{n}.PercentDistilled" for n in range(31)))]
        self.assertEqual(["0", "1", "2", "3.5"], percents[:4])
        self.assertEqual("100", percents[30])
        for curve in ("TrueBoilingPoint", "ASTMD86", "ASTMD1160", "ASTMD2887"):
            found = self.numbers(*(f"{BOILING}Cut#{n}.{curve}" for n in range(31)))
            self.assertEqual(sorted(found), found, curve)

    def test_viscosities_hold_at_temperatures_of_their_own(self):
        reference = BOILING + "Bulk.Viscosity#0.ReferenceTemperature"
        self.assertEqual(["100"], self.texts(reference))
        self.assertEqual(["F"], self.texts(reference + "(uom)"))
        # 100 F are 5 / 9 of 68 above 0 C.
        celsius, = self.check(run("get", self.case, "--neutral", reference, "--unit", "C"), DONE).lines
        self.assertAlmostEqual(68 * 5 / 9, float(celsius), places=9)


if __name__ == "__main__":
    unittest.main()
