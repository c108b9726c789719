# SPDX-License-Identifier: Apache-2.0
"""Five questions to a case: five_questions.py CASE [OTHER]"""

import sys

import fixtop


def answers(file, other=None):
    with fixtop.open(file) as case:
        streams = case.streams(units="Field")
        composition = case.compositions()
        units = case.unit_operations(units="SI")
        machines = units[units["Class"].isin(["QSIHeaterCooler", "QSICompressor"])]
        energy = machines.filter(regex=r"^Class|^(Duty|Power) \[")
        overall = case.balance(units="SI").loc["Overall"].filter(like="Mass")
        changed = fixtop.diff(case, other) if other else None
    return streams, composition, energy, overall, changed


if __name__ == "__main__":
    for answer in answers(*sys.argv[1:]):
        print(answer, end="\n\n")
