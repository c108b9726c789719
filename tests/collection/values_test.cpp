// SPDX-License-Identifier: Apache-2.0
// Values of items: read and stored one by one and all at once, each in the units of its item.

#include "collection/selected_tree.h"
#include "fixtop/var_set.h"

namespace fixtop {

namespace {

constexpr char kNothingRead[] = "No element under this node";
constexpr char kNothingWritten[] = "No element exists under this node";
const FIValue kOwn;

class ItemValues : public SelectedTree {
 protected:
    // Each variable notes in which units it is read and written.
    ItemValues() {
        for (ScriptNode* stream : top_.children) {
            for (ScriptNode* variable : stream->children) {
                variable->on_read = [this](FIVarSet* vars, const std::string&) { Note(vars); };
                variable->on_write = [this](FIVarSet* vars, const std::string&) { Note(vars); };
            }
        }
    }
    void Note(FIVarSet* vars) {
        FIValue unit;
        FIValue spec_unit;
        vars->GetUnit(kOwn, unit);
        vars->GetSpecUnit(kOwn, spec_unit);
        seen_.push_back(Shown(unit) + "/" + Shown(spec_unit));
    }
    static std::string Store(FICollectionIteratorBase& it, const FIValue& value, int mode = 0) {
        FIValue out("left over");
        it.SetAttribute(Text("value"), value, mode, out);
        return Shown(out);
    }
    FICollectionElement* AddIn(const std::string& path, const char* unit, const char* spec_unit) {
        const auto it = At(path);
        FIValue out;
        if (unit) it->SetDisplayUnit(Text(unit), kOwn, out);
        if (spec_unit) it->SetDisplaySpecUnit(Text(spec_unit), kOwn, out);
        return items_->Add(*it);
    }
    static std::vector<FIValue> Numbers(std::initializer_list<double> numbers) {
        std::vector<FIValue> values;
        for (double number : numbers) values.push_back(FIValue::OfReal(number));
        return values;
    }

    Words seen_;
};

TEST_F(ItemValues, of_an_empty_collection_are_none) {
    FIValue untouched("untouched");
    items_->GetValues(Text("value"), &untouched);
    items_->SetValues(Text("value"), &untouched, 1, FIValue(), nullptr);
    EXPECT_EQ("untouched", Shown(untouched));
}

TEST_F(ItemValues, come_in_the_order_of_the_items) {
    Add("Product.Pressure");
    Add("Feed.Temperature");
    Add("Product.Temperature");
    EXPECT_EQ(Words({"5", "1", "4"}), Values());
    Variable(1, 1).Set("status", "Specified");
    EXPECT_EQ(Words({"Specified", "(NULL)", "(NULL)"}), ValuesOf(*items_, "status"));
}

TEST_F(ItemValues, of_several_attributes_come_item_by_item) {
    Variable(1, 1).Set("status", "Specified");
    Variable(0, 0).Set("status", "Missing");
    Add("Product.Pressure");
    Add("Feed.Temperature");
    const FIValue rows[] = {Text("status"), Text("value")};
    FIValue values[4];
    items_->GetRows(rows, 2, values);
    EXPECT_EQ("Specified", Shown(values[0]));
    EXPECT_EQ("5", Shown(values[1]));
    EXPECT_EQ("Missing", Shown(values[2]));
    EXPECT_EQ("1", Shown(values[3]));
    // An item that goes between its attributes answers for all of them.
    Variable(1, 1).on_read = [this](FIVarSet*, const std::string&) {
        Variable(1, 1).on_read = nullptr;
        items_->RemoveAt(0);
    };
    items_->GetRows(rows, 2, values);
    EXPECT_EQ("Specified", Shown(values[0]));
    EXPECT_EQ("5", Shown(values[1]));
    EXPECT_EQ("Missing", Shown(values[2]));
    EXPECT_EQ("1", Shown(values[3]));
    EXPECT_EQ(1, items_->Count());
}

TEST_F(ItemValues, are_read_in_the_units_in_which_the_node_was_shown_when_it_was_added) {
    AddIn("Feed.Temperature", "K", nullptr);
    AddIn("Feed.Pressure", "bar", "psi");
    Add("Product.Pressure");
    seen_.clear();
    Values();
    EXPECT_EQ(Words({"K/(NULL)", "bar/psi", "(NULL)/(NULL)"}), seen_);
    seen_.clear();
    FIValue value;
    On(1)->GetAttribute(Text("value"), value);
    EXPECT_EQ(Words({"bar/psi"}), seen_);
}

TEST_F(ItemValues, do_not_see_the_units_of_whoever_uses_the_same_node) {
    AddIn("Feed.Temperature", "K", nullptr);
    const auto other = At("Feed.Temperature");
    FIValue out;
    other->SetDisplayUnit(Text("F"), kOwn, out);
    seen_.clear();
    Values();
    other->GetAttribute(Text("value"), out);
    Values();
    EXPECT_EQ(Words({"K/(NULL)", "F/(NULL)", "K/(NULL)"}), seen_);
}

TEST_F(ItemValues, are_read_in_other_units_when_the_item_is_told_of_them) {
    Add("Feed.Temperature");
    const Walk it = On(0);
    FIValue out;
    it->SetDisplayUnit(Text("K"), kOwn, out);
    it->SetDisplaySpecUnit(Text("F"), kOwn, out);
    seen_.clear();
    Values();
    EXPECT_EQ(Words({"K/F"}), seen_);
    EXPECT_NE(std::string::npos, Xml().find(" uom=\"K\" specuom=\"F\"/>"));
    it->SetDisplayUnit(FIValue(), kOwn, out);
    EXPECT_EQ(std::string::npos, Xml().find(" uom="));
}

TEST_F(ItemValues, of_items_without_a_node_give_a_text) {
    ASSERT_TRUE(
        items_->Load(Backup("<Pathnode id=\"Top\"><Pathnode id=\"Gone\"/></Pathnode>").c_str(),
                     *top_.Iterate()));
    Add("Feed.Temperature");
    EXPECT_EQ(Words({kNothingRead, "1"}), Values());
    EXPECT_EQ(kNothingWritten, Store(*On(0), FIValue::OfInt(1)));
    std::vector<FIValue> outs(2);
    items_->SetValues(Text("value"), Numbers({8, 9}).data(), 2, FIValue(), outs.data());
    EXPECT_EQ(kNothingWritten, Shown(outs[0]));
    EXPECT_TRUE(outs[1].IsNull());
    EXPECT_EQ(Words({kNothingRead, "9"}), Values());
}

TEST_F(ItemValues, are_stored_in_the_units_of_the_item) {
    AddIn("Feed.Temperature", "K", nullptr);
    seen_.clear();
    EXPECT_EQ("(NULL)", Store(*On(0), FIValue::OfReal(300)));
    EXPECT_EQ(Words({"K/(NULL)"}), seen_);
    EXPECT_EQ(Words({"300"}), Values());
}

TEST_F(ItemValues, are_stored_by_way_of_the_nearest_node_above_that_takes_the_hold) {
    Add("Feed.Temperature");
    const Walk it = On(0);
    // The node itself refuses, and so does the stream; the root takes it.
    top_.can_hold = true;
    EXPECT_EQ("(NULL)", Store(*it, FIValue::OfInt(7)));
    EXPECT_EQ(Words({"hold", "batch"}), top_.log);
    EXPECT_EQ(Words({"set value"}), Variable(0, 0).log);
    top_.log.clear();
    Stream(0).can_hold = true;
    EXPECT_EQ("(NULL)", Store(*it, FIValue::OfInt(8)));
    EXPECT_EQ(Words({"hold", "batch"}), Stream(0).log);
    EXPECT_TRUE(top_.log.empty());
}

TEST_F(ItemValues, are_stored_by_each_operation_of_an_entry) {
    Add("Feed.Temperature");
    const Walk it = On(0);
    FIValue out("left over");
    it->SetValue(FIValue::OfInt(5), 0, out);
    EXPECT_TRUE(out.IsNull());
    EXPECT_EQ(Words({"5"}), Values());
    // What the node does not know it refuses in its own words.
    const FIValue unit("K");
    it->SetSpecValue(FIValue::OfInt(5), 0, out);
    EXPECT_EQ("Not Supported", Shown(out));
    it->SetValueInUnit(FIValue::OfInt(5), unit, 0, out);
    EXPECT_EQ("Not Supported", Shown(out));
    it->SetSpecValueInUnit(FIValue::OfInt(5), unit, 0, out);
    EXPECT_EQ("Not Supported", Shown(out));
    it->SetUnit(unit, out);
    EXPECT_EQ("Not Supported", Shown(out));
    it->SetSpecUnit(unit, out);
    EXPECT_EQ("Not Supported", Shown(out));
}

TEST_F(ItemValues, of_the_first_items_are_stored_at_once) {
    items_->AddMatches(*top_.Iterate(), Text("*.*"));
    std::vector<FIValue> values = Numbers({10, 20, 30});
    values[1].Clear();
    std::vector<FIValue> outs(3, Text("left over"));
    items_->SetValues(Text("value"), values.data(), 3, FIValue(), outs.data());
    EXPECT_EQ(Words({"10", "2", "30", "4", "5", "6"}), Values());
    for (const FIValue& out : outs) EXPECT_TRUE(out.IsNull());
}

TEST_F(ItemValues, beyond_the_last_item_are_left_out) {
    Add("Feed.Temperature");
    std::vector<FIValue> outs(2, Text("left over"));
    items_->SetValues(Text("value"), Numbers({10, 20}).data(), 2, FIValue(), outs.data());
    EXPECT_EQ(Words({"10"}), Values());
    EXPECT_EQ("left over", Shown(outs[1]));
    items_->SetValues(Text("value"), Numbers({11}).data(), 1, FIValue(), nullptr);
    EXPECT_EQ(Words({"11"}), Values());
}

TEST_F(ItemValues, in_a_unit_of_the_values_are_stored_in_that_and_read_in_the_items_own) {
    AddIn("Feed.Temperature", "K", nullptr);
    Add("Feed.Pressure");
    seen_.clear();
    std::vector<FIValue> outs(2, Text("left over"));
    items_->SetValues(Text("value"), Numbers({10, 20}).data(), 2, Text("F"), outs.data());
    EXPECT_TRUE(outs[0].IsNull() && outs[1].IsNull());
    EXPECT_EQ(Words({"F/F", "F/F"}), seen_);
    seen_.clear();
    EXPECT_EQ(Words({"10", "20"}), Values());
    EXPECT_EQ(Words({"K/(NULL)", "(NULL)/(NULL)"}), seen_);
}

TEST_F(ItemValues, survive_an_item_that_goes_while_they_are_read) {
    items_->AddMatches(*top_.Iterate(), Text("*.*"));
    Variable(0, 0).on_read = [this](FIVarSet*, const std::string&) {
        Variable(0, 0).on_read = nullptr;
        items_->RemoveAt(0);
        items_->RemoveAt(0);
    };
    EXPECT_EQ(Words({"1", "3", "4", "5", "6", kNothingRead}), ValuesOf(*items_));
    Variable(0, 2).on_read = [this](FIVarSet*, const std::string&) {
        Variable(0, 2).on_read = nullptr;
        items_->Clear();
    };
    EXPECT_EQ(Words({"3", kNothingRead, kNothingRead, kNothingRead}), ValuesOf(*items_));
}

TEST_F(ItemValues, are_stored_into_the_items_for_which_they_were_given) {
    items_->AddMatches(*top_.Iterate(), Text("*.*"));
    // The one that stores removes the next, and another becomes an item.
    Variable(0, 0).on_write = [this](FIVarSet*, const std::string&) {
        Variable(0, 0).on_write = nullptr;
        items_->RemoveAt(1);
        items_->RemoveAt(4);
        Add("Feed.Pressure");
    };
    std::vector<FIValue> outs(6, Text("left over"));
    items_->SetValues(Text("value"), Numbers({10, 20, 30, 40, 50, 60}).data(), 6, FIValue(),
                      outs.data());
    EXPECT_EQ(Words({"10", "30", "40", "50", "2"}), Values());
    EXPECT_EQ("left over", Shown(outs[1]));
    EXPECT_TRUE(outs[4].IsNull());
    EXPECT_EQ("left over", Shown(outs[5]));
}

TEST_F(ItemValues, are_stored_though_an_item_comes_between) {
    items_->AddMatches(*top_.Iterate(), Text("Feed.*"));
    Variable(0, 0).on_write = [this](FIVarSet*, const std::string&) {
        Variable(0, 0).on_write = nullptr;
        items_->AddBefore(*At("Product.Temperature"), items_->ItemAt(1));
        items_->AddBefore(*At("Product.Pressure"), items_->ItemAt(0));
    };
    items_->SetValues(Text("value"), Numbers({10, 20, 30}).data(), 3, FIValue(), nullptr);
    EXPECT_EQ(Words({"5", "10", "4", "20", "30"}), Values());
}

TEST_F(ItemValues, survive_an_iterator_that_is_let_go_while_it_stores) {
    Add("Feed.Temperature");
    FICollectionIteratorBase* it = items_->MakeIterator();
    ASSERT_TRUE(it->Next());
    Variable(0, 0).on_write = [&](FIVarSet*, const std::string&) {
        it->Release();
        items_->Clear();
    };
    FIValue out("left over");
    it->SetAttribute(Text("uom"), Text("K"), 0, out);
    EXPECT_TRUE(out.IsNull());
    EXPECT_EQ(0, items_->Count());
}

}  // namespace

}  // namespace fixtop
