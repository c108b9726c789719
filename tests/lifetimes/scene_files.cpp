// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/scene_files.h"

namespace fixtop::lifetimes {

namespace {

constexpr char kClasses[] = R"(<QZClassLibrary Name="scene_classes" Format="1">
  <Class Name="QSISimulation"><Superclass>GenericClass</Superclass></Class>
  <ClassAttributes Name="QSISimulation" Count="3">
    <Attribute Name="Flowsheet" Type="Object" Multiplicity="1"><ClassName>SceneFlowsheet</ClassName></Attribute>
    <Attribute Name="Basis" Type="Object" Multiplicity="1"><ClassName>SceneBasis</ClassName></Attribute>
    <Attribute Name="Connection" Type="Object" Multiplicity="1"><ClassName>SceneConnection</ClassName></Attribute>
  </ClassAttributes>
  <Class Name="SceneBasis"><Superclass>GenericClass</Superclass></Class>
  <ClassAttributes Name="SceneBasis" Count="2">
    <Attribute Name="Remark" Type="String" Multiplicity="1"/>
    <Attribute Name="Tuned" Type="Real" Multiplicity="1"/>
  </ClassAttributes>
  <Class Name="SceneConnection"><Superclass>GenericClass</Superclass></Class>
  <ClassAttributes Name="SceneConnection" Count="1">
    <Attribute Name="Signal" Type="Real" Multiplicity="n"/>
  </ClassAttributes>
  <Class Name="SceneFlowsheet"><Superclass>GenericClass</Superclass></Class>
  <ClassAttributes Name="SceneFlowsheet" Count="3">
    <Attribute Name="Name" Type="String" Multiplicity="1"/>
    <Attribute Name="Stream" Type="Object" Multiplicity="n"><ClassName>SceneStream</ClassName>
      <CustomProperties><CustomProperty Name="Key" Value="Name"/></CustomProperties>
    </Attribute>
    <Attribute Name="Block" Type="Object" Multiplicity="n"><ClassName>SceneFlowsheet</ClassName>
      <CustomProperties><CustomProperty Name="Key" Value="Name"/></CustomProperties>
    </Attribute>
  </ClassAttributes>
  <Class Name="SceneStream"><Superclass>GenericClass</Superclass></Class>
  <ClassAttributes Name="SceneStream" Count="6">
    <Attribute Name="Name" Type="String" Multiplicity="1"/>
    <Attribute Name="Temperature" Type="Real" Multiplicity="1">
      <QuantityType>Temperature</QuantityType>
    </Attribute>
    <Attribute Name="Remark" Type="String" Multiplicity="1"/>
    <Attribute Name="Profile" Type="Real" Multiplicity="n"/>
    <Attribute Name="Component" Type="Object" Multiplicity="n"><ClassName>SceneComponent</ClassName>
      <CustomProperties><CustomProperty Name="Key" Value="ComponentName"/></CustomProperties>
    </Attribute>
  </ClassAttributes>
  <Class Name="SceneComponent"><Superclass>GenericClass</Superclass></Class>
  <ClassAttributes Name="SceneComponent" Count="2">
    <Attribute Name="ComponentName" Type="String" Multiplicity="1"/>
    <Attribute Name="MoleFraction" Type="Real" Multiplicity="1"/>
  </ClassAttributes>
</QZClassLibrary>
)";

constexpr char kMap[] = R"(<CCDMMapFile Name="scene_map">
  <TranslateName>Hovex</TranslateName>
  <Linkage><DLL>fixtop.dll</DLL></Linkage>
  <TopNode FunctionName="GetTopHovexEntry"/>
  <Class Name="QSISimulation">
    <Attribute Name="Flowsheet"><Translate Type="Map">appModel.FlowSheetObjects</Translate></Attribute>
    <Attribute Name="Basis"><Translate Type="Map">appModel.Basis.Package</Translate></Attribute>
    <Attribute Name="Connection"><Translate Type="Map">"Published Variables"</Translate></Attribute>
  </Class>
  <Class Name="SceneBasis">
    <Attribute Name="Remark"><Translate Type="Map">Remark</Translate></Attribute>
    <Attribute Name="Tuned"><Translate Type="Map">Tuned</Translate></Attribute>
  </Class>
  <Class Name="SceneConnection">
    <Attribute Name="Signal"><TranslateArray Type="Map">*</TranslateArray></Attribute>
  </Class>
  <Class Name="SceneFlowsheet">
    <Attribute Name="Name">
      <Translate Type="Dummy"><NodeAttributes><Attribute Name="value">(id)</Attribute></NodeAttributes></Translate>
    </Attribute>
    <Attribute Name="Stream"><TranslateArray Type="ArrayFunc">CTStreams</TranslateArray></Attribute>
    <Attribute Name="Block"><TranslateArray Type="ArrayFunc">CTFlowsheets</TranslateArray></Attribute>
  </Class>
  <Class Name="SceneStream">
    <Attribute Name="Name">
      <Translate Type="Dummy"><NodeAttributes><Attribute Name="value">(id)</Attribute></NodeAttributes></Translate>
    </Attribute>
    <Attribute Name="Temperature">
      <Translate Type="Map">Temperature</Translate>
      <Translate Type="Map" Branch="Spec">Temperature[(status)="Specified"]</Translate>
    </Attribute>
    <Attribute Name="Remark"><Translate Type="Map">Notes</Translate></Attribute>
    <Attribute Name="Profile"><TranslateArray Type="Map">Profile.*</TranslateArray></Attribute>
    <Attribute Name="Component"><TranslateArray Type="ArrayFunc">CTComponentArray</TranslateArray></Attribute>
  </Class>
  <Class Name="SceneComponent">
    <Attribute Name="ComponentName">
      <Translate Type="Function">CTComponent<NodeAttributes>
        <Attribute Name="value">(id)</Attribute>
      </NodeAttributes></Translate>
    </Attribute>
    <Attribute Name="MoleFraction"><Translate Type="Function">CTMoleFraction</Translate></Attribute>
  </Class>
</CCDMMapFile>
)";

constexpr char kUnits[] = R"(<CCDMUnitFile Name="scene_units">
  <Provider>QSIUOMAdapter2004_2</Provider>
  <InitString>scene_quantities.xml</InitString>
  <Translate App="C"/>
  <Translate App="K"/>
</CCDMUnitFile>
)";

constexpr char kQuantities[] = R"(<QZClassLibrary Name="scene_quantities" Format="1">
  <QuantityTypeDefn Name="Temperature" BaseUnit="K">
    <UOM Name="C" Formula="Linear" Factor="1" Offset="273.15"/>
    <UOM Name="K" Formula="Linear" Factor="1" Offset="0"/>
  </QuantityTypeDefn>
</QZClassLibrary>
)";

}  // namespace

void WriteSceneFiles(const TemporaryFolder& folder) {
    folder.Write("scene_classes.xml", kClasses);
    folder.Write("scene_map.xml", kMap);
    folder.Write("scene_units.xml", kUnits);
    folder.Write("scene_quantities.xml", kQuantities);
}

const FixtopModelFiles& SceneFiles() {
    static const FixtopModelFiles files = {"scene_classes.xml", "scene_map.xml", "scene_units.xml",
                                           "Hovex"};
    return files;
}

}  // namespace fixtop::lifetimes
