// SPDX-License-Identifier: Apache-2.0
#include "lifetimes/rules.h"

#include <algorithm>

namespace fixtop::lifetimes {

namespace {

// How far an event reaches.
enum class Reach { nothing, target, operation, everything };

Reach ReachOf(Event event) {
    switch (event) {
        case Event::deleted:
        case Event::replaced:
        case Event::replaced_at_its_address:
        case Event::replaced_by_renamed:
            return Reach::target;
        case Event::holder_deleted:
            return Reach::operation;
        case Event::closed:
        case Event::closed_and_reopened:
        case Event::host_out:
        case Event::host_out_and_gone:
        case Event::host_out_and_back:
            return Reach::everything;
        case Event::none:
        case Event::sibling_deleted:
        case Event::renamed:
        case Event::holder_renamed:
        case Event::renamed_and_name_taken:
        case Event::reordered:
        case Event::other_case_closed:
        case Event::client_leaves:
        case Event::client_leaves_twice:
        case Event::client_leaves_late:
        case Event::client_leaves_silently:
            return Reach::nothing;
    }
    return Reach::nothing;
}

// Stands on the object that events happen to, or on something that is part of it.
bool IsOfTarget(Place place) {
    return place != Place::top && place != Place::fixed && place != Place::basis &&
           place != Place::inner_fixed;
}

bool IsInOperation(Place place) {
    return place == Place::operation || place == Place::inner_object ||
           place == Place::inner_variable || place == Place::inner_fixed;
}

Place ParentOf(Place place) {
    switch (place) {
        case Place::variable:
        case Place::element:
        case Place::component:
            return Place::object;
        case Place::inner_variable:
            return Place::inner_object;
        case Place::inner_object:
        case Place::inner_fixed:  // the operation itself, which shares its fate
            return Place::inner_fixed;
        case Place::basis:
            return Place::basis;
        default:
            return Place::fixed;
    }
}

struct Row {
    Op op;
    Answer gone;
};
using Table = std::vector<Row>;

const Table kTop = {{Op::read, Answer::node_deleted},
                    {Op::name, Answer::null},
                    {Op::down, Answer::no},
                    {Op::store, Answer::node_deleted},
                    {Op::self, Answer::same}};

const Table kSolver = {{Op::read, Answer::node_deleted},
                       {Op::store, Answer::node_deleted},
                       {Op::run, Answer::no},
                       {Op::subscribe, Answer::no}};

const Table kBatch = {{Op::elsewhere, Answer::solved}, {Op::read, Answer::node_deleted}};

// What subscribers are told is counted, see the stage.
const Table kTopSubscriber = {{Op::told, Answer::open}, {Op::told_change, Answer::open}};

const Table kNode = {{Op::read, Answer::node_deleted},  {Op::name, Answer::null},
                     {Op::container, Answer::no},       {Op::down, Answer::no},
                     {Op::store, Answer::node_deleted}, {Op::self, Answer::same},
                     {Op::twin, Answer::same},          {Op::other, Answer::apart}};

const Table kIterator = {{Op::read, Answer::node_deleted},
                         {Op::name, Answer::null},
                         {Op::path, Answer::null},
                         {Op::container, Answer::no},
                         {Op::down, Answer::no},
                         {Op::next, Answer::no},
                         {Op::prev, Answer::no},
                         {Op::up, Answer::parent},
                         {Op::store, Answer::node_deleted},
                         {Op::self, Answer::same},
                         {Op::twin, Answer::same},
                         {Op::other, Answer::apart},
                         {Op::fresh, Answer::open},
                         {Op::copy_name, Answer::null},
                         {Op::copy_path, Answer::null},
                         {Op::copy_self, Answer::same},
                         {Op::copy_read, Answer::node_deleted}};

const Table kAttributeCursor = {{Op::read, Answer::node_deleted},
                                {Op::key, Answer::before},
                                {Op::seek_next, Answer::at_end},
                                {Op::seek_name, Answer::at_end},
                                {Op::self, Answer::same},
                                {Op::twin, Answer::same},
                                {Op::other, Answer::apart},
                                {Op::copy_name, Answer::before},
                                {Op::copy_read, Answer::node_deleted},
                                {Op::copy_self, Answer::same}};

// `seek_first` goes by the list.
const Table kChildCursor = {{Op::key, Answer::null},     {Op::entry, Answer::empty},
                            {Op::at_end, Answer::yes},   {Op::seek_next, Answer::no},
                            {Op::seek_prev, Answer::no}, {Op::seek_first, Answer::open},
                            {Op::self, Answer::same},    {Op::twin, Answer::same},
                            {Op::other, Answer::apart},  {Op::copy_self, Answer::same}};

const Table kReference = {{Op::read, Answer::guarded},
                          {Op::name, Answer::null},
                          {Op::path, Answer::null},
                          {Op::store, Answer::guarded},
                          {Op::self, Answer::same},
                          {Op::twin, Answer::same},
                          {Op::other, Answer::apart},
                          {Op::fresh, Answer::open},
                          {Op::copy_name, Answer::null},
                          {Op::copy_path, Answer::null},
                          {Op::copy_read, Answer::node_deleted}};

const Table kSubscriber = {
    {Op::read, Answer::guarded}, {Op::told, Answer::open}, {Op::told_change, Answer::open}};

const Table& TableOf(Kind kind) {
    switch (kind) {
        case Kind::top:
        case Kind::combined_top:
            return kTop;
        case Kind::top_subscriber:
            return kTopSubscriber;
        case Kind::solver:
            return kSolver;
        case Kind::batch:
            return kBatch;
        case Kind::node:
            return kNode;
        case Kind::iterator:
        case Kind::copy:
        case Kind::frozen:
        case Kind::frozen_again:
            return kIterator;
        case Kind::attribute_cursor:
        case Kind::lent_cursor:
            return kAttributeCursor;
        case Kind::child_cursor:
            return kChildCursor;
        case Kind::reference:
            return kReference;
        case Kind::subscriber:
            return kSubscriber;
    }
    return kNode;
}

// A neutral node stands on a reference, and has its name from its attribute.
Answer InNeutral(Op op, Answer raw) {
    // A copy shares the node with its original.
    if (op == Op::read || op == Op::store || op == Op::copy_read) return Answer::guarded;
    if (op == Op::name || op == Op::copy_name) return Answer::before;
    if (op == Op::container) return Answer::open;
    return raw;
}

// Lists in which a seek that runs off goes back to the first element. Others have clamps.
bool IsOfObjectList(const Scene& scene) {
    return scene.view == View::raw &&
           (scene.place == Place::object || scene.place == Place::inner_object ||
            scene.place == Place::operation);
}

Answer GoneAnswer(const Scene& scene, Op op) {
    // A reference guards all rows alike.
    if (op == Op::model_rows) {
        return scene.kind == Kind::reference ? Answer::guarded : Answer::before;
    }
    const Table& table = TableOf(scene.kind);
    const auto row =
        std::find_if(table.begin(), table.end(), [op](const Row& each) { return each.op == op; });
    if (row == table.end()) return Answer::open;
    const bool is_cursor = scene.kind == Kind::attribute_cursor || scene.kind == Kind::lent_cursor;
    if (is_cursor && IsOnRoot(scene) && (op == Op::read || op == Op::copy_read)) {
        return Answer::before;
    }
    if (scene.kind == Kind::child_cursor) {
        const bool from_present = op == Op::seek_next || op == Op::seek_prev;
        if (from_present && IsOfObjectList(scene)) return Answer::at_first;
        if (op != Op::seek_first) return row->gone;
        const bool listed = FateOfParent(scene.event, scene.place) == Fate::live;
        return listed ? Answer::yes : Answer::no;
    }
    return scene.view == View::raw ? row->gone : InNeutral(op, row->gone);
}

std::vector<Op> OpsOf(View view, Kind kind) {
    std::vector<Op> ops;
    for (const Row& row : TableOf(kind)) ops.push_back(row.op);
    const bool node = kind == Kind::node || kind == Kind::iterator || kind == Kind::reference;
    if (view != View::raw && node) ops.push_back(Op::model_rows);
    return ops;
}

// Which of the operations begin an order. Those that look alike follow one of these.
std::vector<std::ptrdiff_t> FirstsOf(const std::vector<Op>& ops) {
    std::vector<std::ptrdiff_t> firsts;
    for (std::size_t i = 0; i < ops.size(); ++i) {
        const bool follows = ops[i] == Op::container || ops[i] == Op::next || ops[i] == Op::prev ||
                             ops[i] == Op::twin || ops[i] == Op::other || ops[i] == Op::fresh ||
                             ops[i] == Op::copy_path || ops[i] == Op::copy_self ||
                             ops[i] == Op::copy_read || ops[i] == Op::at_end ||
                             ops[i] == Op::seek_prev || ops[i] == Op::seek_name;
        if (!follows) firsts.push_back(static_cast<std::ptrdiff_t>(i));
    }
    return firsts;
}

const char* const kOps[] = {
    "read",       "model_rows",  "name",      "path",      "container", "down",      "next",
    "prev",       "up",          "store",     "self",      "twin",      "other",     "fresh",
    "copy_name",  "copy_path",   "copy_self", "copy_read", "key",       "entry",     "at_end",
    "seek_first", "seek_next",   "seek_prev", "seek_name", "run",       "subscribe", "elsewhere",
    "told",       "told_change", "release",   "rest"};

}  // namespace

Fate FateOf(Event event, Place place) {
    switch (ReachOf(event)) {
        case Reach::nothing:
            return Fate::live;
        case Reach::target:
            return IsOfTarget(place) ? Fate::deleted : Fate::live;
        case Reach::operation:
            return IsInOperation(place) ? Fate::deleted : Fate::live;
        case Reach::everything:
            return Fate::closed;
    }
    return Fate::live;
}

Fate FateOfParent(Event event, Place place) {
    return FateOf(event, ParentOf(place));
}

const char* NameOf(Op op) {
    return kOps[static_cast<int>(op)];
}

int OrdersOf(View view, Kind kind) {
    return static_cast<int>(FirstsOf(OpsOf(view, kind)).size()) + 2;
}

std::vector<Op> OpsInOrder(View view, Kind kind, int order) {
    std::vector<Op> ops = OpsOf(view, kind);
    const std::vector<std::ptrdiff_t> firsts = FirstsOf(ops);
    const auto at = static_cast<std::size_t>(order);
    if (at == firsts.size()) return {Op::rest};
    if (at > firsts.size()) return {};
    std::rotate(ops.begin(), ops.begin() + firsts[at], ops.end());
    return ops;
}

Answer AnswerOf(const Scene& scene, Op op) {
    if (op == Op::rest) return Answer::open;
    if (FateOf(scene.event, scene.place) == Fate::live) return Answer::right;
    return GoneAnswer(scene, op);
}

}  // namespace fixtop::lifetimes
