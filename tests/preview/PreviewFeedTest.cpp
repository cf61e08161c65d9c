// What the phone preview tells its browsers of a layout as it changes, and
// how their pointers operate its controls.
#include "app/preview/PointerQueue.h"
#include "app/preview/PointerTracker.h"
#include "app/preview/PreviewFeed.h"
#include "document/OSCProject.h"
#include "document/TextField.h"
#include "tests/support/TestControls.h"
#include "tests/support/TestFiles.h"

#include <gtest/gtest.h>

namespace {

using nlohmann::json;

// The bytes of a text whose characters are all below U+0100, one each.
std::string Latin1(const std::string& utf8)
{
    std::string bytes;
    for (std::size_t i = 0; i < utf8.size(); ++i) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        bytes += lead < 0x80 ? utf8[i] : static_cast<char>((lead & 0x1F) << 6 | (utf8[++i] & 0x3F));
    }
    return bytes;
}

// A layout as the cases write it: {"device", "orientation", "current", "pages":
// [{"name", "controls": [...]}]}, or null for none open. A page's name is
// read as Latin-1, one byte a character, so that a case can hold any bytes.
std::optional<LayoutSnapshot> LayoutOf(const json& description)
{
    if (description.is_null())
        return std::nullopt;
    OSCProject project;
    project.pages.clear();
    project.device = description.value("device", 1);
    project.orientation = description.value("orientation", 1);
    project.currentPage = description.value("current", 0);
    for (const json& page : description["pages"]) {
        OSCPage& added = *project.pages.emplace_back(std::make_unique<OSCPage>());
        CopyTextField(added.name, Latin1(page["name"]));
        for (const json& control : page["controls"])
            AddControl(added, control);
    }
    return LayoutSnapshot::Of(project);
}

const std::map<std::string, BrowserPointer::Phase> kPhases{{"down", BrowserPointer::kDown},
                                                           {"move", BrowserPointer::kMove},
                                                           {"up", BrowserPointer::kUp},
                                                           {"cancel", BrowserPointer::kCancel}};

std::string Told(const PointerOperation& operation)
{
    static const char* const phases[] = {"pressed", "dragged", "released", "away"};
    return std::to_string(operation.index) + ' ' + phases[operation.phase] + ' ' +
           std::to_string(operation.control.value) + (operation.valueChanged ? " changed" : "");
}

TEST(PreviewPointers, APressHoldsTheControlUnderItsPointerAndRunsItsValueRuleOnItOrForAFaderOrKnobAnywhere)
{
    for (const json& c : Cases(DATA_DIR "/preview.json", "pointers")) {
        const LayoutSnapshot layout =
            *LayoutOf({{"pages", {{{"name", "A"}, {"controls", c["controls"]}}}}});
        PointerTracker tracker;
        for (const json& step : c["steps"]) {
            SCOPED_TRACE(step.dump());
            if (step[0] == "forget") {
                std::vector<std::string> ended;
                for (const PointerOperation& operation : tracker.Forget(step[1], layout))
                    ended.push_back(Told(operation));
                EXPECT_EQ(json(ended), step[2]);
                continue;
            }
            const json& p = step[0];
            const std::optional<PointerOperation> operation =
                tracker.Take(p[0], {p[1], kPhases.at(p[2]), p[3], p[4], p[5]}, layout);
            EXPECT_EQ(operation ? json(Told(*operation)) : json(), step[1]);
        }
    }
}

TEST(PreviewPointers, MovesWaitingTogetherCountAsTheirPointersLast)
{
    for (const json& c : Cases(DATA_DIR "/preview.json", "queue")) {
        PointerQueue queue;
        for (const json& p : c["told"])
            queue.Add(p[0], {p[1], kPhases.at(p[2]), 0, p[3], 0});
        json taken = json::array();
        for (const PointerQueue::Told& told : queue.TakeAll()) {
            const auto phase = std::find_if(kPhases.begin(), kPhases.end(), [&](const auto& named) {
                return named.second == told.pointer.phase;
            });
            taken.push_back({told.browser, told.pointer.pointer, phase->first, told.pointer.x});
        }
        EXPECT_EQ(taken, c["taken"]);
        EXPECT_TRUE(queue.TakeAll().empty());
    }
}

TEST(PreviewFeed, BrowsersAreToldOnlyWhatChangedAndANewcomerEverything)
{
    for (const json& c : Cases(DATA_DIR "/preview.json", "feed")) {
        PreviewFeed feed;
        for (const json& step : c["steps"]) {
            SCOPED_TRACE(step[0].dump());
            std::vector<std::string> told;
            // A page's controls are written out in full once; after that, its number tells.
            for (const std::string& message : feed.Update(LayoutOf(step[0]))) {
                const json read = json::parse(message);
                const bool brief = read["kind"] == "page" && told.size() < step[1].size() &&
                                   !step[1][told.size()].get<std::string>().starts_with('{');
                told.push_back(brief ? "page " + read["page"].dump() : message);
            }
            EXPECT_EQ(json(told), step[1]);
        }
        // Everything the last layout holds, for a browser that comes now.
        const std::vector<std::string> everything = feed.Everything();
        EXPECT_EQ(everything.size(), feed.Told() ? feed.Told()->pages.size() + 1 : 1);
        PreviewFeed fresh;
        EXPECT_EQ(fresh.Update(feed.Told()), everything);
    }
}

}  // namespace
