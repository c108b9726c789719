# SPDX-License-Identifier: Apache-2.0
"""The samples, built against the installed tree and run."""

import unittest

from support import SOURCE, build_installed, main, run

CASE = SOURCE / "tests/install/consumer/plant.json"
STREAMS = "appModel.FlowSheetObjects.Streams"


class Examples(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = build_installed(SOURCE / "examples", "examples",
                                     "-DCMAKE_CXX_FLAGS=-Wall -Wextra -Wshadow -Werror")

    def test_value_is_read(self):
        self.assertEqual(f"{STREAMS}.Feed.Pressure = 6000 kPa (Specified)\n",
                         run(self.folder / "value", CASE, f"{STREAMS}.Feed.Pressure"))

    def test_value_is_written(self):
        self.assertEqual(f"{STREAMS}.Feed.Pressure = 45 bar (Specified)\n",
                         run(self.folder / "value", CASE, f"{STREAMS}.Feed.Pressure", "45", "bar"))

    def test_table(self):
        self.assertEqual('Name,Temperature C,Pressure bar,MolarFlow kmol/h\n"Feed",25,60,\n'
                         '"Product",26.85,5,\n', run(self.folder / "table", CASE))

    def test_typed(self):
        self.assertEqual("Feed: 298.15 K\nProduct: 300 K\n", run(self.folder / "typed", CASE))
        shown = run(self.folder / "typed", "demo").splitlines()
        # 30 C; the mole fractions as the case has them.
        gas = next(line for line in shown if line.startswith("Raw Gas: "))
        self.assertTrue(gas.startswith("Raw Gas: 303.15 K, Nitrogen 0.02, "), gas)
        fractions = [float(part.rsplit(" ", 1)[1]) for part in gas.split(", ")[1:]]
        self.assertAlmostEqual(1, sum(fractions), places=9)
        self.assertEqual(["EX-100: Flowsheet.UnitOperation(EX-100)",
                          "K-100: Flowsheet.UnitOperation(K-100)"], shown[-2:])

    def test_typed_is_shown_in_its_document(self):
        page = (SOURCE / "docs/neutral-view.md").read_text(encoding="utf-8")
        name, block = page.split("<!-- sample:")[1].split(" -->\n")
        shown = "".join(f"{line[4:]}\n" for line in block.split("<!--")[0].rstrip("\n").split("\n"))
        self.assertEqual((SOURCE / name).read_text(encoding="utf-8").split("\n", 1)[1], shown)

    def test_client_survives_deletion(self):
        path = f"{STREAMS}.Product.Temperature"
        self.assertEqual(f"{path} = 50 C\ngone: Node deleted\nread: Node deleted\n{path} = 70 C\n",
                         run(self.folder / "gone"))

    def test_own_host(self):
        self.assertEqual("Feed,MaterialStreamObject,25,6000\nProduct,MaterialStreamObject,-20,\n"
                         f"{STREAMS}.Feed.Temperature = 26.85 C\n"
                         f"{STREAMS}.Feed.Temperature\n300 K\n",
                         run(self.folder / "own_host"))

    def test_own_host_needs_nothing_of_the_case_host(self):
        for header in (SOURCE / "examples/own_host").glob("*.h"):
            self.assertNotIn("casehost", header.read_text(), header)

    def test_random_client_of_the_own_host(self):
        folder = build_installed(SOURCE / "tests/install/random_client", "random_client",
                                 f"-DFIXTOP_EXAMPLES={SOURCE / 'examples'}")
        # Freed memory is written over.
        for seed in range(1, 4):
            shown = run(folder / "random_client", 20000, seed, environment={"MALLOC_PERTURB_": "165"})
            self.assertIn("answers of live nodes", shown)


if __name__ == "__main__":
    main()
