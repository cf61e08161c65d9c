#include "LayoutChange.h"

#include "OSCPage.h"
#include "OSCProject.h"
#include "TextField.h"

#include <algorithm>
#include <cstring>
#include <memory>

namespace {

using SelectionRun = LayoutChange::SelectionRun;

// Equal as the layout file keeps them: the selection and test-mode values aside.
bool SameStoredFields(const OSCControl& a, const OSCControl& b)
{
    return TextOf(a.name) == TextOf(b.name) && TextOf(a.command) == TextOf(b.command) &&
           a.deviceId == b.deviceId && a.controlNumber == b.controlNumber && a.x == b.x &&
           a.y == b.y && a.width == b.width && a.height == b.height &&
           a.minValue == b.minValue && a.maxValue == b.maxValue && a.reserved1 == b.reserved1 &&
           a.reserved2 == b.reserved2 && a.reserved3 == b.reserved3 &&
           a.reserved4 == b.reserved4 && a.type == b.type && a.color == b.color &&
           a.flags == b.flags;
}

// Equal but for the place and size.
bool SameButGeometry(const OSCControl& a, const OSCControl& b)
{
    OSCControl moved = b;
    moved.x = a.x, moved.y = a.y, moved.width = a.width, moved.height = a.height;
    return SameStoredFields(a, moved);
}

std::string_view NameOf(const std::array<char, 256>& name)
{
    return {name.data(), ::strnlen(name.data(), name.size() - 1)};
}

std::array<char, 256> CopyOfName(const char (&name)[256])
{
    std::array<char, 256> copy{};
    std::memcpy(copy.data(), name, copy.size());
    return copy;
}

bool SamePage(const PageCopy& before, const OSCPage& after)
{
    if (NameOf(before.name) != TextOf(after.name) ||
        before.controls.size() != after.controls.size())
        return false;
    for (std::size_t i = 0; i < before.controls.size(); ++i) {
        if (!SameStoredFields(before.controls[i], *after.controls[i]))
            return false;
    }
    return true;
}

PageCopy CopyOf(const OSCPage& page)
{
    PageCopy copy{CopyOfName(page.name), {}};
    copy.controls.reserve(page.controls.size());
    for (const auto& control : page.controls)
        copy.controls.push_back(*control);
    return copy;
}

std::unique_ptr<OSCPage> PageFrom(const PageCopy& copy)
{
    auto page = std::make_unique<OSCPage>();
    std::memcpy(page->name, copy.name.data(), copy.name.size());
    page->controls.reserve(copy.controls.size());
    for (const OSCControl& control : copy.controls)
        page->controls.push_back(std::make_unique<OSCControl>(control));
    return page;
}

// Runs of selected controls, page by page.
template <typename Pages, typename ControlOf>
std::vector<SelectionRun> SelectionOf(const Pages& pages, ControlOf controlOf)
{
    std::vector<SelectionRun> runs;
    for (std::size_t p = 0; p < pages.size(); ++p) {
        const int count = static_cast<int>(controlOf(pages[p]).size());
        for (int i = 0; i < count; ++i) {
            if (controlOf(pages[p])[static_cast<std::size_t>(i)].selected == 0)
                continue;
            if (!runs.empty() && runs.back().page == static_cast<int>(p) && runs.back().end == i)
                ++runs.back().end;
            else
                runs.push_back({static_cast<int>(p), i, i + 1});
        }
    }
    return runs;
}

// A view of a live page's controls as records, for SelectionOf.
struct LiveControls {
    const std::vector<std::unique_ptr<OSCControl>>& controls;
    std::size_t size() const { return controls.size(); }
    const OSCControl& operator[](std::size_t i) const { return *controls[i]; }
};

// Copies of before and after with the common start and end left out.
template <typename Item, typename Live, typename Same, typename Copy>
int TrimCommonEnds(const std::vector<Item>& before, const std::vector<Live>& after, Same same,
                   Copy copy, std::vector<Item>& keptBefore, std::vector<Item>& keptAfter)
{
    std::size_t first = 0;
    while (first < before.size() && first < after.size() && same(before[first], *after[first]))
        ++first;
    std::size_t beforeEnd = before.size(), afterEnd = after.size();
    while (beforeEnd > first && afterEnd > first &&
           same(before[beforeEnd - 1], *after[afterEnd - 1]))
        --beforeEnd, --afterEnd;
    keptBefore.assign(before.begin() + static_cast<std::ptrdiff_t>(first),
                      before.begin() + static_cast<std::ptrdiff_t>(beforeEnd));
    for (std::size_t i = first; i < afterEnd; ++i)
        keptAfter.push_back(copy(*after[i]));
    return static_cast<int>(first);
}

void AddGeometry(std::vector<LayoutChange::GeometryRun>& runs, int index, const OSCControl& before,
                 const OSCControl& after)
{
    const auto delta = [](int from, int to) { return static_cast<std::int16_t>(to - from); };
    const LayoutChange::GeometryRun step{index,
                                         index + 1,
                                         delta(before.x, after.x),
                                         delta(before.y, after.y),
                                         delta(before.width, after.width),
                                         delta(before.height, after.height)};
    if (!runs.empty()) {
        LayoutChange::GeometryRun& last = runs.back();
        if (last.end == index && last.dx == step.dx && last.dy == step.dy &&
            last.dWidth == step.dWidth && last.dHeight == step.dHeight) {
            ++last.end;
            return;
        }
    }
    runs.push_back(step);
}

LayoutChange::PageEdit EditOf(int index, const PageCopy& before, const OSCPage& after)
{
    LayoutChange::PageEdit edit{index, before.name, CopyOfName(after.name), {}, {}, {}, false,
                                false};
    edit.renamed = NameOf(before.name) != TextOf(after.name);
    if (before.controls.size() != after.controls.size()) {
        edit.spliced = true;
        edit.splice.first = TrimCommonEnds(
            before.controls, after.controls, SameStoredFields,
            [](const OSCControl& control) { return control; }, edit.splice.before,
            edit.splice.after);
        return edit;
    }
    for (std::size_t i = 0; i < before.controls.size(); ++i) {
        const OSCControl& was = before.controls[i];
        const OSCControl& is = *after.controls[i];
        if (SameStoredFields(was, is))
            continue;
        if (SameButGeometry(was, is))
            AddGeometry(edit.geometry, static_cast<int>(i), was, is);
        else
            edit.records.push_back({static_cast<int>(i), was, is});
    }
    return edit;
}

void ReplaceControls(OSCPage& page, int first, std::size_t removed,
                     const std::vector<OSCControl>& inserted)
{
    auto& controls = page.controls;
    const auto at = controls.begin() + first;
    controls.erase(at, at + static_cast<std::ptrdiff_t>(removed));
    std::vector<std::unique_ptr<OSCControl>> made;
    made.reserve(inserted.size());
    for (const OSCControl& control : inserted)
        made.push_back(std::make_unique<OSCControl>(control));
    controls.insert(controls.begin() + first, std::make_move_iterator(made.begin()),
                    std::make_move_iterator(made.end()));
}

void ApplyEdit(OSCPage& page, const LayoutChange::PageEdit& edit, bool undo)
{
    std::memcpy(page.name, (undo ? edit.nameBefore : edit.nameAfter).data(), sizeof page.name);
    if (edit.spliced) {
        const LayoutChange::ControlSplice& splice = edit.splice;
        ReplaceControls(page, splice.first, (undo ? splice.after : splice.before).size(),
                        undo ? splice.before : splice.after);
        return;
    }
    const int sign = undo ? -1 : 1;
    for (const LayoutChange::GeometryRun& run : edit.geometry) {
        for (int i = run.first; i < run.end; ++i) {
            OSCControl& control = *page.controls[static_cast<std::size_t>(i)];
            control.x = static_cast<std::int16_t>(control.x + sign * run.dx);
            control.y = static_cast<std::int16_t>(control.y + sign * run.dy);
            control.width = static_cast<std::int16_t>(control.width + sign * run.dWidth);
            control.height = static_cast<std::int16_t>(control.height + sign * run.dHeight);
        }
    }
    for (const LayoutChange::RecordChange& record : edit.records)
        *page.controls[static_cast<std::size_t>(record.index)] = undo ? record.before : record.after;
}

}  // namespace

LayoutSnapshot LayoutSnapshot::Of(const OSCProject& project)
{
    LayoutSnapshot snapshot{project.device, project.orientation, project.currentPage, {}};
    snapshot.pages.reserve(project.pages.size());
    for (const auto& page : project.pages)
        snapshot.pages.push_back(CopyOf(*page));
    return snapshot;
}

void LayoutSnapshot::CopyInto(OSCProject& project) const
{
    project.device = device;
    project.orientation = orientation;
    project.currentPage = currentPage;
    project.pages.clear();
    for (const PageCopy& page : pages)
        project.pages.push_back(PageFrom(page));
}

LayoutChange LayoutChange::Between(const LayoutSnapshot& before, const OSCProject& after)
{
    LayoutChange change;
    change.before_ = {before.device, before.orientation, before.currentPage,
                      SelectionOf(before.pages, [](const PageCopy& p) -> const auto& {
                          return p.controls;
                      })};
    change.after_ = {after.device, after.orientation, after.currentPage,
                     SelectionOf(after.pages, [](const std::unique_ptr<OSCPage>& p) {
                         return LiveControls{p->controls};
                     })};
    if (before.pages.size() != after.pages.size()) {
        change.pagesSpliced_ = true;
        change.pageSplice_.first = TrimCommonEnds(
            before.pages, after.pages, SamePage, CopyOf, change.pageSplice_.before,
            change.pageSplice_.after);
        return change;
    }
    for (std::size_t p = 0; p < before.pages.size(); ++p) {
        if (SamePage(before.pages[p], *after.pages[p]))
            continue;
        change.pageEdits_.push_back(EditOf(static_cast<int>(p), before.pages[p], *after.pages[p]));
    }
    return change;
}

bool LayoutChange::ChangesLayout() const
{
    return pagesSpliced_ || !pageEdits_.empty() || before_.device != after_.device ||
           before_.orientation != after_.orientation;
}

bool LayoutChange::MovesOnly() const
{
    if (pagesSpliced_ || before_.device != after_.device ||
        before_.orientation != after_.orientation)
        return false;
    for (const PageEdit& edit : pageEdits_) {
        if (edit.renamed || edit.spliced || !edit.records.empty())
            return false;
        for (const GeometryRun& run : edit.geometry) {
            if (run.dWidth != 0 || run.dHeight != 0)
                return false;
        }
    }
    return true;
}

void LayoutChange::Undo(OSCProject& project) const
{
    Apply(project, true);
}

void LayoutChange::Redo(OSCProject& project) const
{
    Apply(project, false);
}

void LayoutChange::Apply(OSCProject& project, bool undo) const
{
    if (pagesSpliced_) {
        const auto& removed = undo ? pageSplice_.after : pageSplice_.before;
        const auto& inserted = undo ? pageSplice_.before : pageSplice_.after;
        const auto at = project.pages.begin() + pageSplice_.first;
        project.pages.erase(at, at + static_cast<std::ptrdiff_t>(removed.size()));
        std::vector<std::unique_ptr<OSCPage>> made;
        for (const PageCopy& copy : inserted)
            made.push_back(PageFrom(copy));
        project.pages.insert(project.pages.begin() + pageSplice_.first,
                             std::make_move_iterator(made.begin()),
                             std::make_move_iterator(made.end()));
    }
    for (const PageEdit& edit : pageEdits_)
        ApplyEdit(*project.pages[static_cast<std::size_t>(edit.page)], edit, undo);
    const State& from = undo ? after_ : before_;
    const State& to = undo ? before_ : after_;
    // The host may set the device between changes; only a change of it is undone.
    if (from.device != to.device)
        project.device = to.device;
    if (from.orientation != to.orientation)
        project.orientation = to.orientation;
    project.currentPage = to.currentPage;
    for (const auto& page : project.pages) {
        for (const auto& control : page->controls)
            control->selected = 0;
    }
    for (const SelectionRun& run : to.selection) {
        auto& controls = project.pages[static_cast<std::size_t>(run.page)]->controls;
        for (int i = run.first; i < run.end; ++i)
            controls[static_cast<std::size_t>(i)]->selected = 1;
    }
}

std::size_t LayoutChange::Bytes() const
{
    std::size_t bytes = sizeof *this + (before_.selection.size() + after_.selection.size()) *
                                           sizeof(SelectionRun);
    const auto pagesBytes = [](const std::vector<PageCopy>& pages) {
        std::size_t sum = 0;
        for (const PageCopy& page : pages)
            sum += sizeof page + page.controls.size() * sizeof(OSCControl);
        return sum;
    };
    bytes += pagesBytes(pageSplice_.before) + pagesBytes(pageSplice_.after);
    for (const PageEdit& edit : pageEdits_) {
        bytes += sizeof edit + edit.geometry.size() * sizeof(GeometryRun) +
                 edit.records.size() * sizeof(RecordChange) +
                 (edit.splice.before.size() + edit.splice.after.size()) * sizeof(OSCControl);
    }
    return bytes;
}
