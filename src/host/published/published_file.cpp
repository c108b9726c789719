// SPDX-License-Identifier: Apache-2.0
#include "host/published/published_file.h"

#include "collection/published_vars.h"
#include "framework/iterator/shielded_iterator.h"
#include "framework/nodes/top_entry.h"
#include "platform/file_search.h"
#include "platform/open_file.h"
#include "platform/xml_reader.h"

namespace fixtop {

namespace {

std::string PublishedFile(host::SimulationCase& simulation_case) {
    return simulation_case.GetDocumentName().PublishedFile().Str();
}

// Empty when there is none, or one that is too long to be read.
std::string TextOf(const std::string& path) {
    constexpr std::size_t block = 1 << 16;
    const FilePtr file = OpenFile(path, "rb");
    std::string text;
    for (std::size_t read = file ? block : 0; read == block && text.size() <= kMaxXmlBytes;) {
        const std::size_t size = text.size();
        text.resize(size + block);
        read = std::fread(text.data() + size, 1, block, file.get());
        text.resize(size + read);
    }
    return text.size() <= kMaxXmlBytes ? text : std::string();
}

}  // namespace

bool HasPublishedFile(host::SimulationCase& simulation_case) {
    return FileExists(PublishedFile(simulation_case));
}

FIContext* MakePublishedList(const HAandCContext& models) {
    host::SimulationCase* simulation_case = models.Case();
    const bool is_shown = simulation_case && models.ShowsPublishedFile();
    const std::string text = is_shown ? TextOf(PublishedFile(*simulation_case)) : std::string();
    if (text.empty()) return EmptyContext();
    const auto others =
        Ref<HAandCContext>::Share(new Shielded<HAandCContext>(simulation_case, models.Files()));
    others->HidePublishedFile();
    const auto top = Ref<FIEntry>::Share(new Shielded<FITopEntry>(others.Get(), nullptr, nullptr));
    const auto from = Ref<FIIterator>::Adopt(new Shielded<FIIterator>(top.Get(), true));
    return HandOut(static_cast<FIContext*>(new Shielded<PublishedVars>(text.c_str(), *from)));
}

}  // namespace fixtop
