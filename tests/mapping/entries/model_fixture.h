// SPDX-License-Identifier: Apache-2.0
#pragma once

// A small neutral view over a scripted tree: class library, map, units by the real adapter, and the
// functions that the map names. The application:
//
//     Top.appModel.Sheet            id "Main"
//         Streams                   Feed, Product
//             Temperature, ...      values with their units in the application's words
//         Units                     P-1 (Pump), X-1 (a kind that no class stands for)
//         Levels                    L0, L1, L2

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

#include "mapping/nodes/class_context.h"
#include "mapping/nodes/class_entry.h"
#include "mapping/nodes/model_top.h"
#include "mapping/open/open_model.h"
#include "mapping/translators/semantic_modules.h"
#include "support/host_reading.h"
#include "support/log_lines.h"
#include "support/scripted_tree.h"
#include "support/temporary_folder.h"

namespace fixtop {

inline constexpr char kModelModule[] = "model_test.dll";

inline constexpr char kTestClasses[] = R"(<QZClassLibrary>
  <Enumeration Name="ePhase" EnumIsClosed="1"><Option Name="Vapor"/><Option Name="Liquid"/></Enumeration>
  <Enumeration Name="eOpen"><Option Name="Yes"/></Enumeration>
  <ClassAttributes Name="QSISimulation">
    <Attribute Name="Flowsheet" Type="Object" Multiplicity="1"><ClassName>QSIFlowsheet</ClassName></Attribute>
    <Attribute Name="Unmapped" Type="Object" Multiplicity="1"><ClassName>QSIFlowsheet</ClassName></Attribute>
  </ClassAttributes>
  <ClassAttributes Name="QSIFlowsheet">
    <Attribute Name="Name" Type="String" Multiplicity="1"/>
    <Attribute Name="Stream" Type="Object" Multiplicity="n"><ClassName>QSIStream</ClassName>
      <CustomMetaData>Key~Name~</CustomMetaData></Attribute>
    <Attribute Name="Unit" Type="Object" Multiplicity="n"><ClassName>QSIUnit</ClassName>
      <CustomMetaData>Key~Name~</CustomMetaData></Attribute>
    <Attribute Name="Level" Type="Real" Multiplicity="n"><QuantityType>Pressure</QuantityType></Attribute>
    <Attribute Name="Nothing" Type="Object" Multiplicity="n"><ClassName>QSIStream</ClassName></Attribute>
    <Attribute Name="Lost" Type="Object" Multiplicity="1"><ClassName>QSINowhere</ClassName></Attribute>
    <Attribute Name="Faces" Type="Object" Multiplicity="1"><ClassName>QSIFaces</ClassName></Attribute>
    <Attribute Name="Twins" Type="Object" Multiplicity="n"><ClassName>QSIFaces</ClassName></Attribute>
  </ClassAttributes>
  <ClassAttributes Name="QSINamed"><Attribute Name="Name" Type="String" Multiplicity="1"/></ClassAttributes>
  <Class Name="QSIStream"><Superclass>QSINamed</Superclass></Class>
  <ClassAttributes Name="QSIStream">
    <Attribute Name="Temperature" Type="Real" Multiplicity="1"><QuantityType>Temperature</QuantityType></Attribute>
    <Attribute Name="Pressure" Type="Real" Multiplicity="1"><QuantityType>Pressure</QuantityType></Attribute>
    <Attribute Name="Phase" Type="Enumeration" Multiplicity="1"><EnumName>ePhase</EnumName></Attribute>
    <Attribute Name="Own" Type="Enumeration" Multiplicity="1"><EnumName>ePhase</EnumName></Attribute>
    <Attribute Name="Loose" Type="Enumeration" Multiplicity="1"><EnumName>eOpen</EnumName></Attribute>
    <Attribute Name="Stages" Type="Integer" Multiplicity="1"><QuantityType>Pressure</QuantityType></Attribute>
    <Attribute Name="Bare" Type="Integer" Multiplicity="1"/>
    <Attribute Name="Label" Type="String" Multiplicity="1"/>
    <Attribute Name="Half" Type="Real" Multiplicity="1"/>
    <Attribute Name="Whole" Type="Integer" Multiplicity="1"/>
    <Attribute Name="Kind" Type="Enumeration" Multiplicity="1"><EnumName>ePhase</EnumName></Attribute>
    <Attribute Name="Unit" Type="String" Multiplicity="1"/>
    <Attribute Name="Elsewhere" Type="Real" Multiplicity="1"/>
    <Attribute Name="Gone" Type="Real" Multiplicity="1"/>
    <Attribute Name="NoMap" Type="Real" Multiplicity="1"/>
    <Attribute Name="Odd" Type="Float" Multiplicity="1"/>
  </ClassAttributes>
  <Class Name="QSIUnit"><Superclass>QSINamed</Superclass></Class>
  <ClassAttributes Name="QSIUnit">
    <Attribute Name="Number" Type="Integer" Multiplicity="1"/>
  </ClassAttributes>
  <Class Name="QSIPump"><Superclass>QSIUnit</Superclass></Class>
  <ClassAttributes Name="QSIPump">
    <Attribute Name="Head" Type="Real" Multiplicity="1"/>
  </ClassAttributes>
  <ClassAttributes Name="QSIFaces">
    <Attribute Name="Both" Type="Real" Multiplicity="1"><QuantityType>Pressure</QuantityType></Attribute>
    <Attribute Name="Split" Type="Real" Multiplicity="1"><QuantityType>Pressure</QuantityType></Attribute>
    <Attribute Name="Turned" Type="Real" Multiplicity="1"><QuantityType>Pressure</QuantityType></Attribute>
    <Attribute Name="OnlySpec" Type="Real" Multiplicity="1"/>
    <Attribute Name="OnlyCalc" Type="Real" Multiplicity="1"/>
    <Attribute Name="Below" Type="Object" Multiplicity="1"><ClassName>QSIDeep</ClassName></Attribute>
    <Attribute Name="TurnedBelow" Type="Object" Multiplicity="1"><ClassName>QSIDeep</ClassName></Attribute>
    <Attribute Name="SpecBelow" Type="Object" Multiplicity="1"><ClassName>QSIDeep</ClassName></Attribute>
  </ClassAttributes>
  <ClassAttributes Name="QSIDeep">
    <Attribute Name="Amount" Type="Real" Multiplicity="1"><QuantityType>Pressure</QuantityType></Attribute>
    <Attribute Name="CalcAmount" Type="Real" Multiplicity="1"/>
  </ClassAttributes>
</QZClassLibrary>)";

inline constexpr char kTestMap[] = R"(<CCDMMapFile>
  <TranslateName>Test</TranslateName>
  <Linkage><DLL>model_test.dll</DLL></Linkage>
  <Translate Type="Function">GoModel</Translate>
  <TopNode FunctionName="MakeTop"/>
  <Enumeration Name="ePhase">
    <Option Name="Vapor" AppName="VAP"/><Option Name="Liquid" AppName="LIQ"/><Option Name="Plasma" AppName="PLA"/>
  </Enumeration>
  <Class Name="QSISimulation">
    <Attribute Name="Flowsheet"><Translate Type="Map">Sheet</Translate></Attribute>
  </Class>
  <Class Name="QSIFlowsheet">
    <Attribute Name="Name"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">(id)</Attribute></NodeAttributes></Translate></Attribute>
    <Attribute Name="Stream"><TranslateArray Type="Map">Streams.*</TranslateArray></Attribute>
    <Attribute Name="Unit"><TranslateArray Type="ArrayFunc">ListUnits</TranslateArray></Attribute>
    <Attribute Name="Level"><TranslateArray Type="Map">Levels.*</TranslateArray></Attribute>
    <Attribute Name="Nothing"><TranslateArray Type="Map">NoList.*</TranslateArray></Attribute>
    <Attribute Name="Lost"><Translate Type="Dummy"/></Attribute>
    <Attribute Name="Faces"><Translate Type="Map">Faces</Translate></Attribute>
    <Attribute Name="Twins">
      <TranslateArray Type="Map" Branch="Calc">Calcs.*</TranslateArray>
      <TranslateArray Type="Map" Branch="Spec">Specs.*</TranslateArray>
    </Attribute>
  </Class>
  <Class Name="QSINamed">
    <Attribute Name="Name"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">(id)</Attribute></NodeAttributes></Translate></Attribute>
  </Class>
  <Class Name="QSIStream">
    <Attribute Name="Temperature"><Translate Type="Map">Temperature</Translate></Attribute>
    <Attribute Name="Pressure"><Translate Type="Map">Pressure</Translate></Attribute>
    <Attribute Name="Phase"><Translate Type="Map">Phase</Translate></Attribute>
    <Attribute Name="Own"><Translate Type="Map">Phase</Translate>
      <Enumeration Name="ePhase"><Option Name="Liquid" AppName="VAP"/></Enumeration></Attribute>
    <Attribute Name="Loose"><Translate Type="Map">Phase</Translate></Attribute>
    <Attribute Name="Stages"><Translate Type="Map">Stages</Translate></Attribute>
    <Attribute Name="Bare"><Translate Type="Map">Stages</Translate></Attribute>
    <Attribute Name="Label"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">'"fixed text"</Attribute><Attribute Name="description">'said</Attribute></NodeAttributes></Translate></Attribute>
    <Attribute Name="Half"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">'"0.5"</Attribute></NodeAttributes></Translate></Attribute>
    <Attribute Name="Whole"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">'"12"</Attribute></NodeAttributes></Translate></Attribute>
    <Attribute Name="Kind"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">'LIQ</Attribute></NodeAttributes></Translate></Attribute>
    <Attribute Name="Unit"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">Temperature(uom)</Attribute></NodeAttributes></Translate></Attribute>
    <Attribute Name="Elsewhere"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">Pressure</Attribute></NodeAttributes></Translate></Attribute>
    <Attribute Name="Gone"><Translate Type="Map">NotThere</Translate></Attribute>
    <Attribute Name="Odd"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">'%Colour</Attribute></NodeAttributes></Translate>
      <SetVar Var="Colour">red</SetVar></Attribute>
  </Class>
  <Class Name="QSIUnit">
    <Attribute Name="Number"><Translate Type="Dummy"><NodeAttributes><Attribute Name="value">'%UnitNumber</Attribute></NodeAttributes></Translate></Attribute>
  </Class>
  <Class Name="QSIPump"><Attribute Name="Head"><Translate Type="Map">Head</Translate></Attribute></Class>
  <Class Name="QSIFaces">
    <Attribute Name="Both"><Translate Type="Map">Both</Translate></Attribute>
    <Attribute Name="Split"><Translate Type="Map">Calculated</Translate><Translate Type="Map" Branch="Spec">Specified</Translate></Attribute>
    <Attribute Name="Turned"><Translate Type="Map">Specified</Translate><Translate Type="Map" Branch="Calc">Calculated</Translate></Attribute>
    <Attribute Name="OnlySpec"><Translate Type="Map" Branch="Spec">Specified</Translate></Attribute>
    <Attribute Name="OnlyCalc"><Translate Type="Map" Branch="Calc">Calculated</Translate></Attribute>
    <Attribute Name="Below"><Translate Type="Map" Branch="Calc">CalcSide</Translate><Translate Type="Map" Branch="Spec">SpecSide</Translate></Attribute>
    <Attribute Name="TurnedBelow"><Translate Type="Map">SpecSide</Translate><Translate Type="Map" Branch="Calc">CalcSide</Translate></Attribute>
    <Attribute Name="SpecBelow"><Translate Type="Map" Branch="Spec">SpecSide</Translate></Attribute>
  </Class>
  <Class Name="QSIDeep">
    <Attribute Name="Amount"><Translate Type="Map">Amount</Translate></Attribute>
    <Attribute Name="CalcAmount"><Translate Type="Map" Branch="Calc">Amount</Translate></Attribute>
  </Class>
</CCDMMapFile>)";

inline constexpr char kTestUnits[] = R"(<CCDMUnitFile>
  <Provider>QSIUOMAdapter2004_2</Provider><InitString>CCDM_UOMDefinitions.xml</InitString>
  <Translate App="degC" Ccdm="C"/><Translate App="degF" Ccdm="F"/><Translate App="K"/>
  <Translate App="psia" Ccdm="psi"/><Translate App="kPa"/><Translate App="bar"/>
</CCDMUnitFile>)";

class Model : public testing::Test {
 protected:
    Model() : log(folder) {
        Current() = &top;
        folder.Write("classes.xml", kTestClasses);
        folder.Write("map.xml", kTestMap);
        folder.Write("units.xml", kTestUnits);
        static constexpr NamedFunction kFunctions[] = {
            {"MakeTop", MakeTop}, {"GoModel", GoModel}, {"ListUnits", ListUnits}};
        OfferSemanticModule(kModelModule, kFunctions);
        FillSheet();
    }
    ~Model() override {
        WithdrawSemanticModule(kModelModule);
        Current() = nullptr;
    }

    static ModelFiles Files() {
        return {"classes.xml", "map.xml", "units.xml", "Test", nullptr, nullptr};
    }
    // An iterator on the root of a new tree.
    static Ref<FIIterator> RootOf(const Ref<CCDMClassContext>& context) {
        if (!context) return {};
        const auto entry = Ref<FIEntry>::Share(new CCDMTopEntry(context));
        return Ref<FIIterator>::Adopt(new FIIterator(entry.Get(), false));
    }
    static Ref<FIIterator> Open() { return RootOf(OpenModelOnTop(Files())); }
    static Ref<FIIterator> OpenPure() {
        return RootOf(OpenPureModel("classes.xml", kTopClass, nullptr));
    }
    static Ref<FIIterator> At(const std::string& path) { return At(Open(), path); }
    static Ref<FIIterator> At(Ref<FIIterator> it, const std::string& path) {
        EXPECT_TRUE(it);
        EXPECT_TRUE(it->SeekPath(Text(path))) << path;
        return it;
    }
    static Ref<FIIterator> CopyAt(FIIterator& it, const std::string& path) {
        return At(Ref<FIIterator>::Adopt(it.Copy()), path);
    }
    static Ref<FIEntry> EntryAt(FIIterator& it) {
        return Ref<FIEntry>::Share(it.EntryAt(it.Depth()));
    }
    static std::string Value(const std::string& path, const char* name = "value") {
        return Read(*At(path), name);
    }
    static std::string Set(FIIteratorBase& it, const char* name, const FIValue& value) {
        FIValue out("left over");
        it.SetAttribute(FIValue(name), value, 0, out);
        return Shown(out);
    }
    std::string Raw(const ScriptNode& node, const char* attribute = "value") {
        for (const auto& [name, value] : node.attributes) {
            if (name == attribute) return Shown(value);
        }
        return "(no such attribute)";
    }

    TemporaryFolder folder;
    LogLines log;
    ScriptNode top{"Top"};
    ScriptNode& sheet{top.Add("appModel").Add("Sheet")};
    ScriptNode& streams{sheet.Add("Streams")};
    ScriptNode& feed{streams.Add("Feed")};
    ScriptNode& product{streams.Add("Product")};
    ScriptNode& faces{sheet.Add("Faces")};
    bool has_top = true;

    ScriptNode& sheetChild(const std::string& name) {
        for (ScriptNode* child : sheet.children) {
            if (child->name.ToText() == name) return *child;
        }
        return sheet.Add(name);
    }

 private:
    static ScriptNode*& Current() {
        static ScriptNode* current = nullptr;
        return current;
    }
    static FIEntry* MakeTop() {
        return Current()->children.empty() ? nullptr : Current()->Entry().Detach();
    }
    static bool GoModel(FIIteratorBase* it, int move) { return !move || it->SeekChild("appModel"); }
    // The number is set above the element, before the iterator goes down.
    static int ListUnits(FIIteratorBase* it, FIValue* subclass, int index) {
        const auto walker = Ref<FIIteratorBase>::Adopt(it->Copy());
        FIIteratorBase& moved = index < 0 ? *walker : *it;
        if (index >= 0) moved.SetVarText("UnitNumber", FIValue::OfInt(index + 1));
        if (!moved.SeekChild("Units") || !moved.DownFirst()) return 0;
        int count = 0;
        for (; index < 0 || count < index; ++count) {
            if (!moved.Next()) return count + 1;
        }
        FIValue type;
        moved.GetAttribute(Text("type"), type);
        if (!type.IsNull()) *subclass = type;
        return index;
    }
    void FillStream(ScriptNode& stream, const char* name, double temperature) {
        stream.Set("id", name).Set("type", "MaterialStreamObject");
        stream.Add("Temperature").Set("value", temperature).Set("uom", "degC").Set("status", "OK");
        stream.Add("Pressure")
            .Set("value", 100.0)
            .Set("uom", "psia")
            .Set("uom_options", "psia\nkPa\nbar")
            .Set("spec_value", 50.0)
            .Set("spec_uom", "kPa");
        stream.Add("Phase").Set("value", "VAP").Set("spec_value", "LIQ");
        stream.Add("Stages").Set("value", 3).Set("uom", "bar");
    }
    void FillSheet() {
        sheet.Set("id", "Main");
        FillStream(feed, "Feed", 25.0);
        FillStream(product, "Product", 100.0);
        ScriptNode& units = sheet.Add("Units");
        units.Add("P-1").Set("id", "P-1").Set("type", "QSIPump").Add("Head").Set("value", 7.5);
        units.Add("X-1").Set("id", "X-1").Set("type", "QSIStranger");
        units.Add("U-1").Set("id", "U-1");
        ScriptNode& levels = sheet.Add("Levels");
        for (int i = 0; i < 3; ++i) {
            levels.Add("L" + std::to_string(i)).Set("value", 1.5 + i).Set("uom", "bar");
        }
        faces.Add("Both")
            .Set("value", 1.0)
            .Set("uom", "bar")
            .Set("spec_value", 2.0)
            .Set("spec_uom", "kPa");
        faces.Add("Calculated").Set("value", 3.0).Set("uom", "bar").Set("status", "calculated");
        faces.Add("Specified").Set("value", 400.0).Set("uom", "kPa").Set("status", "specified");
        faces.Add("CalcSide").Add("Amount").Set("value", 5.0).Set("uom", "bar");
        faces.Add("SpecSide").Add("Amount").Set("value", 6.0).Set("uom", "kPa");
        for (const char* name : {"C0", "C1", "C2"})
            sheetChild("Calcs").Add(name).Set("value", name);
        for (const char* name : {"S0", "S1"}) sheetChild("Specs").Add(name).Set("value", name);
    }
};

}  // namespace fixtop
