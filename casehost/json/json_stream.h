// SPDX-License-Identifier: Apache-2.0
#pragma once

// JsonStream: a JSON text read piece by piece, so that neither the text nor all of its nodes need
// be in memory at a time. The nodes are those of json_tree.h, without their places in the text.
//
// It reads good texts only and does not say what is wrong with others: then it answers false or
// null, for the whole of the text to be read as a Tree, which does. It never takes what that one
// refuses; what it leaves to it is rare: another encoding of the text, numbers next to zero.

#include <deque>
#include <istream>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "json/json_tree.h"

namespace fixtop::casehost::json {

class JsonStream {
 public:
    explicit JsonStream(std::string_view text)
        : at_(text.data()), end_(text.data() + text.size()) {}
    // Read as far as it is asked for.
    explicit JsonStream(std::istream& in) : in_(&in) {}
    JsonStream(const JsonStream&) = delete;
    JsonStream& operator=(const JsonStream&) = delete;

    // Takes the next character that is no blank, if it is this one.
    bool Take(char c);
    bool AtEnd();
    // The name of a member and the colon behind it. The text lives as long as the stream.
    bool Name(std::string_view& name);
    // The next value, which stands in `depth` arrays and objects. Null when it can't be read.
    const JsonNode* Item(int depth);  // until the next one is read
    JsonNode* Kept(int depth);        // as long as the stream lives

    // False when two members of an object have one name.
    static bool NamesDiffer(const JsonNode& object);

 private:
    // Nodes and texts that stay where they are.
    class Store {
     public:
        JsonNode& Make();
        std::string_view Keep(std::string text) { return texts_.emplace_back(std::move(text)); }
        void Clear();

     private:
        static constexpr std::size_t kBlock = 256;

        std::vector<std::unique_ptr<JsonNode[]>> blocks_;
        std::size_t used_ = 0;
        std::deque<std::string> texts_;
    };

    JsonNode* Read(Store& store, int depth);
    bool Value(int depth, JsonNode& node);
    bool Members(int depth, JsonNode& object);
    bool Elements(int depth, JsonNode& array);
    // The rest of an array or object behind its first bracket: items until `close`.
    template <class ReadItem>
    bool Items(JsonNode& list, char close, ReadItem read);
    bool Text(std::string_view& text);
    bool OddText(std::string_view& text);
    bool Number(double& number);
    bool Word(std::string_view word);
    // Moves on to the next character that is no blank; false when the text ends before.
    bool SkipBlanks();
    // More text behind what stands from `from` on, which goes to another place.
    bool Refill(const char*& from);
    bool RanOut() {
        ran_out_ = true;
        return false;
    }

    std::istream* in_ = nullptr;
    std::string window_;
    const char* at_ = nullptr;
    const char* end_ = nullptr;
    bool ran_out_ = false;  // what could not be read may go on in the text to come
    std::size_t nodes_ = 0;
    Store kept_;
    Store item_;
    Store* store_ = nullptr;
};

}  // namespace fixtop::casehost::json
