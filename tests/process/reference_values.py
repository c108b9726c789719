# SPDX-License-Identifier: Apache-2.0
"""Reference values for thermo_test.cpp and unit_ops_test.cpp.

Independent of the library: plain bisection everywhere, no derivative, no shared code. Formulas:
    K = Pc/P exp(5.373 (1+w) (1 - Tc/T))           sum z (K-1)/(1 + V (K-1)) = 0
    h_gas = integral of Cp dT from 298.15 K         h_liq = h_gas - 5.373 R Tc (1+w)
    s_gas = integral of Cp/T dT - R ln(P/101.325)   s_liq = s_gas(P = Psat) - dH/T, Psat = P K
    both plus -R sum x ln x
The integrals are Simpson sums, so that the polynomial antiderivatives are checked too.
Run: python3 reference_values.py
"""
from math import exp, log

R = 8.314462618
C = {  # Tc K, Pc kPa, w, Cp polynomial in kJ/(kgmole K)
    "Methane": (190.4, 4600.0, 0.011, (19.25, 5.213e-2, 1.197e-5, -1.132e-8)),
    "Ethane": (305.4, 4880.0, 0.099, (5.409, 1.781e-1, -6.938e-5, 8.713e-9)),
    "Propane": (369.8, 4250.0, 0.153, (-4.224, 3.063e-1, -1.586e-4, 3.215e-8)),
    "n-Butane": (425.2, 3800.0, 0.199, (9.487, 3.313e-1, -1.108e-4, -2.822e-9)),
    "n-Hexane": (507.5, 3010.0, 0.299, (-4.413, 5.820e-1, -3.119e-4, 6.494e-8)),
}
NAMES = list(C)


def bisect(f, lo, hi):
    sign = f(lo) > 0
    for _ in range(300):
        mid = 0.5 * (lo + hi)
        if (f(mid) > 0) == sign:
            lo = mid
        else:
            hi = mid
    return 0.5 * (lo + hi)


def simpson(f, a, b, n=2000):
    h = (b - a) / n
    s = f(a) + f(b) + sum((4 if i % 2 else 2) * f(a + i * h) for i in range(1, n))
    return s * h / 3


def cp(n, T):
    return sum(c * T ** k for k, c in enumerate(C[n][3]))


def K(n, T, P):
    Tc, Pc, w, _ = C[n]
    return Pc / P * exp(5.373 * (1 + w) * (1 - Tc / T))


def flash(z, T, P):
    k = [K(n, T, P) for n in NAMES]
    if sum(a * b for a, b in zip(z, k)) <= 1:
        return 0.0, z, None
    if sum(a / b for a, b in zip(z, k)) <= 1:
        return 1.0, None, z
    V = bisect(lambda v: sum(a * (b - 1) / (1 + v * (b - 1)) for a, b in zip(z, k)), 0.0, 1.0)
    x = [a / (1 + V * (b - 1)) for a, b in zip(z, k)]
    return V, x, [a * b for a, b in zip(x, k)]


def enthalpy(z, T, P):
    V, x, y = flash(z, T, P)
    h = [simpson(lambda t: cp(n, t), 298.15, T) for n in NAMES]
    d = [5.373 * R * C[n][0] * (1 + C[n][2]) for n in NAMES]
    total = 0.0
    if y:
        total += V * sum(a * b for a, b in zip(y, h))
    if x:
        total += (1 - V) * sum(a * (b - c) for a, b, c in zip(x, h, d))
    return total


def entropy(z, T, P):
    V, x, y = flash(z, T, P)
    total = 0.0
    for i, n in enumerate(NAMES):
        s = simpson(lambda t: cp(n, t) / t, 298.15, T)
        if y and y[i] > 0:
            total += V * y[i] * (s - R * log(P / 101.325) - R * log(y[i]))
        if x and x[i] > 0:
            psat = P * K(n, T, P)
            dh = 5.373 * R * C[n][0] * (1 + C[n][2])
            total += (1 - V) * x[i] * (s - R * log(psat / 101.325) - dh / T - R * log(x[i]))
    return total


def main():
    z = [0.3, 0.2, 0.2, 0.2, 0.1]
    for T, P in ((300.0, 2000.0), (250.0, 500.0), (350.0, 1000.0)):
        V, x, y = flash(z, T, P)
        print("PT", T, P, "V", repr(V), "x", x, "y", y)
        print("   H", repr(enthalpy(z, T, P)), "S", repr(entropy(z, T, P)))
    bub = bisect(lambda T: sum(a * K(n, T, 1000.0) for a, n in zip(z, NAMES)) - 1, 100, 600)
    dew = bisect(lambda T: 1 - sum(a / K(n, T, 1000.0) for a, n in zip(z, NAMES)), 100, 600)
    print("bubble T", repr(bub), "dew T", repr(dew))
    print("bubble P", repr(sum(a * K(n, 280.0, 1.0) for a, n in zip(z, NAMES))),
          "dew P", repr(1 / sum(a / K(n, 280.0, 1.0) for a, n in zip(z, NAMES))))
    tv = bisect(lambda T: flash(z, T, 1000.0)[0] - 0.4, bub, dew)
    print("T at P 1000 VF 0.4", repr(tv))
    pv = bisect(lambda P: flash(z, 280.0, P)[0] - 0.25, 1.0, 1e5)
    print("P at T 280 VF 0.25", repr(pv))
    h = enthalpy(z, 300.0, 2000.0)
    t = bisect(lambda T: enthalpy(z, T, 500.0) - h, 200, 350)
    print("valve 300 K 2000 -> 500 kPa: T", repr(t), "V", repr(flash(z, t, 500.0)[0]))
    s = entropy(z, 420.0, 300.0)
    t = bisect(lambda T: entropy(z, T, 1200.0) - s, 350, 600)
    dh = enthalpy(z, t, 1200.0) - enthalpy(z, 420.0, 300.0)
    print("isentropic 420 K 300 -> 1200 kPa: T", repr(t), "dh", repr(dh))
    t75 = bisect(lambda T: enthalpy(z, T, 1200.0) - enthalpy(z, 420.0, 300.0) - dh / 0.75, 350, 700)
    print("   at 75 %: T", repr(t75))


if __name__ == "__main__":
    main()
