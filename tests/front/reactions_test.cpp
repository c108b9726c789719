// SPDX-License-Identifier: Apache-2.0
// Reactions and reactors of the neutral view, of the built-in case and of a recorded one.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <map>

#include "open_module.h"

namespace fixtop {

namespace {

using Iterator = Ref<FIIteratorBase>;
using Amounts = std::map<std::string, double>;

class NeutralReactions : public NeutralModule {
 protected:
    Iterator At(const std::string& path) {
        auto it = Iterator::Adopt(FixtopMakeIterator(root_.Get(), false));
        EXPECT_TRUE(it->SeekPath(FIValue(path.c_str()))) << path;
        return it;
    }
    static FIValue ValueBelow(FIIteratorBase& it, const char* name) {
        const auto below = Iterator::Adopt(it.Copy());
        FIValue value;
        EXPECT_TRUE(below->SeekPath(FIValue(name))) << name;
        below->GetAttribute(FIValue("value"), value);
        return value;
    }
    std::string Text(const std::string& path) {
        FIValue value;
        At(path)->GetAttribute(FIValue("value"), value);
        return value.IsNull() ? "(NULL)" : value.ToText();
    }
    double Number(const std::string& path) {
        FIValue value;
        At(path)->GetAttribute(FIValue("value"), value);
        EXPECT_FALSE(value.IsNull()) << path;
        return value.AsDouble();
    }
    std::string Type(const std::string& path) {
        FIValue value;
        At(path)->GetAttribute(FIValue("type"), value);
        return value.ToText();
    }
    // For each element of a list the number `value` under the text `key`.
    Amounts List(const std::string& owner, const char* list, const char* key, const char* value) {
        Amounts amounts;
        Iterator it = At(owner);
        FIValue name;
        for (bool on = it->SeekChild(list); on; on = it->Next()) {
            it->GetName(name);
            if (name.ToText() != list) continue;
            amounts[ValueBelow(*it, key).ToText()] = ValueBelow(*it, value).AsDouble();
        }
        return amounts;
    }
    static std::string Unit(const std::string& name) {
        return "Flowsheet.UnitOperation[Name=\"" + name + "\"].";
    }
    static std::string Reaction(const std::string& name) {
        return "ReactionPackage.Reaction[Name=\"" + name + "\"].";
    }
};

TEST_F(NeutralReactions, each_kind_of_reaction_is_a_class_of_its_own) {
    OpenNeutral("demo");
    const std::pair<const char*, const char*> kinds[] = {
        {"Reforming", "QSICatalyticRateReaction"},
        {"Combustion", "QSIConversionReaction"},
        {"Shift", "QSIEquilibriumReaction"},
        {"Ethane Prereforming", "QSIReversibleKineticReaction"},
        {"Propane Prereforming", "QSISimpleRateReaction"}};
    for (const auto& [name, kind] : kinds) {
        const std::string path = "ReactionPackage.Reaction[Name=\"" + std::string(name) + "\"]";
        EXPECT_EQ("Object(" + std::string(kind) + ")", Type(path));
        EXPECT_EQ("Vapor", Text(path + ".ReactionPhase")) << name;
        EXPECT_NEAR(0, Number(path + ".BalanceError"), 0.01) << name;
    }
    EXPECT_EQ("CatalyticRate", Text(Reaction("Reforming") + "ReactionType"));
    EXPECT_EQ(
        (Amounts{{"Methane", -1}, {"H2O", -2}, {"CO2", 1}, {"Hydrogen", 4}}),
        List(Reaction("Reforming"), "Reactant", "ComponentName", "StoichiometricCoefficient"));
}

// k = A exp(-E/RT) at the reference temperature; the difference of the energies is the heat.
TEST_F(NeutralReactions, rates_follow_from_their_constants) {
    OpenNeutral("demo");
    const std::pair<std::string, const char*> rates[] = {
        {Reaction("Reforming"), "ForwardRate."},
        {Reaction("Reforming"), "ReverseRate."},
        {Reaction("Ethane Prereforming"), "ReverseRate."},
        {Reaction("Propane Prereforming"), "ForwardRate."}};
    for (const auto& [reaction, rate] : rates) {
        const std::string factor = reaction + rate;
        const double rt = 8.314462618 * (Number(factor + "ReferenceTemperature") + 273.15);
        const double constant = Number(factor + "PreExponentialFactor") *
                                std::exp(-Number(factor + "ActivationEnergy") / rt);
        EXPECT_NEAR(1, Number(factor + "RateConstant") / constant, 1e-4) << factor;
    }
    const std::string reversible = Reaction("Ethane Prereforming");
    EXPECT_NEAR(Number(reversible + "ReactionHeat"),
                Number(reversible + "ForwardRate.ActivationEnergy") -
                    Number(reversible + "ReverseRate.ActivationEnergy"),
                1e-6);
}

TEST_F(NeutralReactions, adsorption_terms_have_the_orders_of_their_row) {
    OpenNeutral("demo");
    const std::string second = Reaction("Reforming") + "AdsorptionTerm#1.";
    EXPECT_EQ(0.0004, Number(second + "RateFactor.PreExponentialFactor"));
    EXPECT_EQ(61000, Number(second + "RateFactor.ActivationEnergy"));
    EXPECT_EQ((Amounts{{"Methane", 0}, {"H2O", 1}, {"CO2", 0}, {"Hydrogen", 0}}),
              List(second, "DrivingForce", "ComponentName", "Exponent"));
}

TEST_F(NeutralReactions, equilibrium_constants_of_the_table_are_those_of_the_coefficients) {
    OpenNeutral("demo");
    for (const char* name : {"Shift", "Propane Disproportionation", "Butane Disproportionation"}) {
        const std::string reaction = Reaction(name);
        const auto coefficient = [&](const char* which) {
            return Number(reaction + which + "Coefficient");
        };
        const Amounts table =
            List(reaction, "EquilibriumVsTemperature", "Temperature", "EquilibriumConstant");
        EXPECT_EQ(5u, table.size());
        for (const auto& [celsius, constant] : table) {
            const double t = std::stod(celsius) + 273.15;
            const double logarithm =
                coefficient("Constant") + coefficient("InverseTemperature") / t +
                coefficient("Logarithmic") * std::log(t) + coefficient("Linear") * t +
                coefficient("Quadratic") * t * t + coefficient("Cubic") * t * t * t;
            EXPECT_NEAR(std::log(constant), logarithm, 1e-4) << name << " at " << celsius;
        }
    }
}

TEST_F(NeutralReactions, sets_list_active_reactions_then_the_others_with_their_ranks) {
    OpenNeutral("demo");
    const std::string set = "ReactionPackage.ReactionSet[Name=Set-1].";
    EXPECT_EQ("EquilibriumAndCatalyticRate", Text(set + "ReactionSetType"));
    EXPECT_EQ((Amounts{{"Reforming", 1}, {"Shift", 1}, {"Combustion", 0}}),
              List(set, "Reaction", "ReactionName", "IsActive"));
    EXPECT_EQ((Amounts{{"Reforming", 0}, {"Shift", 1}, {"Combustion", 2}}),
              List(set, "Reaction", "ReactionName", "Rank"));
}

// What is made of a component is the sum over the reactions of coefficient times extent.
TEST_F(NeutralReactions, balances_of_reactors_close_with_extents_feed_and_products) {
    OpenNeutral("demo");
    for (const char* name : {"CRV-100", "ERV-100", "GBR-100"}) {
        const std::string set = Unit(name) + "ReactionSet";
        Amounts made;
        for (const auto& [reaction, extent] : List(set, "Reaction", "ReactionName", "Extent")) {
            for (const auto& [component, coefficient] :
                 List("ReactionPackage.Reaction[Name=\"" + reaction + "\"]", "Reactant",
                      "ComponentName", "StoichiometricCoefficient")) {
                made[component] += coefficient * extent;
            }
        }
        const auto balance = [&](const char* what) {
            return List(set, "ReactantBalance", "ComponentName", what);
        };
        const Amounts in = balance("TotalInflow");
        const Amounts reacted = balance("TotalReaction");
        const Amounts out = balance("TotalOutflow");
        EXPECT_EQ(8u, in.size()) << name;
        double total_in = 0;
        double total_out = 0;
        for (const auto& [component, flow] : in) {
            EXPECT_NEAR(flow + reacted.at(component), out.at(component), 1e-9)
                << name << " " << component;
            if (!made.empty()) {
                EXPECT_NEAR(made[component], reacted.at(component), 1e-9)
                    << name << " " << component;
            }
            total_in += flow;
            total_out += out.at(component);
        }
        EXPECT_NEAR(Number(Unit(name) + "FeedFluid.MolarFlow"), total_in, 1e-9) << name;
        double products = Number(Unit(name) + "Flash.Vapor.MolarFlow");
        if (std::string(name) == "ERV-100") {
            products += Number(Unit(name) + "Flash.Liquid1.MolarFlow");
        }
        EXPECT_NEAR(products, total_out, 1e-9) << name;
    }
}

// Duty, less what is lost, is what the products carry more than the feed and what reacts takes up.
TEST_F(NeutralReactions, duties_of_reactors_fit_the_heats_of_their_streams_and_reactions) {
    OpenNeutral("demo");
    const std::string converter = Unit("CRV-100");
    EXPECT_NEAR(Number(converter + "Duty") - Number(converter + "HeatLoss.HeatFlow"),
                Number(converter + "Flash.Vapor.HeatFlow") -
                    Number(converter + "FeedFluid.HeatFlow") + Number(converter + "ReactionHeat"),
                1);
    const std::string equilibrium = Unit("ERV-100");
    EXPECT_NEAR(Number(equilibrium + "Duty"),
                Number(equilibrium + "Flash.Vapor.HeatFlow") +
                    Number(equilibrium + "Flash.Liquid1.HeatFlow") -
                    Number(equilibrium + "FeedFluid.HeatFlow") +
                    Number(equilibrium + "ReactionHeat"),
                1);
    for (const char* name : {"ERV-100", "GBR-100"}) {
        EXPECT_LT(Number(Unit(name) + "FinalGibbsEnergy"),
                  Number(Unit(name) + "InitialGibbsEnergy"))
            << name;
    }
}

TEST_F(NeutralReactions, gibbs_reactors_tell_which_components_are_given) {
    OpenNeutral("demo");
    const std::string gibbs = Unit("GBR-100");
    EXPECT_EQ("GibbsReactionsOnly", Text(gibbs + "Mode"));
    EXPECT_EQ("true", Text(gibbs + "FlowSpec[ComponentName=Nitrogen].IsInert"));
    EXPECT_EQ(1, Number(gibbs + "FlowSpec[ComponentName=Nitrogen].OutletFraction"));
    EXPECT_EQ("false", Text(gibbs + "FlowSpec[ComponentName=Methane].IsInert"));
    EXPECT_EQ("C4H10", Text(gibbs + "Formula#5.ChemicalFormula"));
}

TEST_F(NeutralReactions, a_recorded_reactor_answers_as_far_as_its_file_does) {
    const char* given = std::getenv("FIXTOP_CASES");
    const auto file = std::filesystem::path(given ? given : FIXTOP_CASES) / "real" /
                      "ammonia-synthesis-single-pass.dwxmz";
    if (!std::filesystem::exists(file)) GTEST_SKIP() << "no sample case " << file;
    OpenNeutral(file.string());
    const std::string reaction = "ReactionPackage.Reaction[Name=R_NH3].";
    EXPECT_EQ("Equilibrium", Text(reaction + "ReactionType"));
    EXPECT_EQ("11000/T - 25.0", Text(reaction + "Expression"));
    EXPECT_NEAR(-45898, Number(reaction + "ReactionHeat"), 1e-9);
    EXPECT_EQ("Ammonia", Text(reaction + "BaseReactant.ComponentName"));
    EXPECT_EQ("Equilibrium", Text("ReactionPackage.ReactionSet[Name=NH3Set].ReactionSetType"));
    const std::string reactor = Unit("R-1");
    EXPECT_EQ("Isothermic", Text(reactor + "OperationMode"));
    EXPECT_NEAR(426.85, Number(reactor + "Flash.Temperature"), 1e-9);
    EXPECT_NEAR(-53.18201297075688 * 3600, Number(reactor + "Duty"), 1e-6);
    EXPECT_NEAR(37.75218780689238 * 3600, Number(reactor + "FinalGibbsEnergy"), 1e-6);
    EXPECT_EQ("R_NH3", Text(reactor + "ReactionSet.Reaction.ReactionName"));
    const double extent = Number(reactor + "ReactionSet.Reaction.Extent");
    EXPECT_NEAR(0.49019675836571985 * 3.6, extent, 1e-12);
    const Amounts reacted =
        List(reactor + "ReactionSet", "ReactantBalance", "ComponentName", "TotalReaction");
    EXPECT_EQ(3u, reacted.size());
    EXPECT_NEAR(2 * extent, reacted.at("Ammonia"), 1e-9);
    EXPECT_NEAR(-3 * extent, reacted.at("Hydrogen"), 1e-9);
}

}  // namespace

}  // namespace fixtop
