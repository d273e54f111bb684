#include "tests/model/user_actions.h"

#include <random>

namespace {

const char* Name(ActionKind kind) {
    switch (kind) {
    case ActionKind::Drop: return "Drop";
    case ActionKind::AddByDialog: return "AddByDialog";
    case ActionKind::Clear: return "Clear";
    case ActionKind::SelectRow: return "SelectRow";
    case ActionKind::DeleteKey: return "DeleteKey";
    case ActionKind::ClickBox: return "ClickBox";
    case ActionKind::ClickDisabledEdit: return "ClickDisabledEdit";
    case ActionKind::TypePages: return "TypePages";
    case ActionKind::TypeResolution: return "TypeResolution";
    case ActionKind::TypeFolder: return "TypeFolder";
    case ActionKind::TypeExtraOptions: return "TypeExtraOptions";
    case ActionKind::Browse: return "Browse";
    case ActionKind::OpenDestination: return "OpenDestination";
    case ActionKind::Convert: return "Convert";
    case ActionKind::StopNo: return "StopNo";
    case ActionKind::StopYes: return "StopYes";
    case ActionKind::TimerTick: return "TimerTick";
    case ActionKind::ConverterEndsWell: return "ConverterEndsWell";
    case ActionKind::ConverterEndsBadly: return "ConverterEndsBadly";
    case ActionKind::Tab: return "Tab";
    case ActionKind::BackTab: return "BackTab";
    case ActionKind::PressDown: return "PressDown";
    case ActionKind::PressSpace: return "PressSpace";
    case ActionKind::PressEnter: return "PressEnter";
    case ActionKind::TypeCharacter: return "TypeCharacter";
    case ActionKind::Count: break;
    }
    return "?";
}

}  // namespace

std::vector<Action> RandomActions(std::uint32_t seed, int count) {
    // How often each kind comes, in the order of ActionKind: a batch must be reached, and be left.
    static const int kWeights[] = {8, 8, 1, 6, 3, 14, 7, 3, 4, 6, 2, 3, 4,
                                   8, 2, 3, 3, 8, 2,  6, 3, 6, 6, 6, 6};
    static_assert(std::size(kWeights) == static_cast<std::size_t>(ActionKind::Count));
    std::vector<ActionKind> urn;
    for (std::size_t kind = 0; kind < std::size(kWeights); ++kind) {
        urn.insert(urn.end(), static_cast<std::size_t>(kWeights[kind]), static_cast<ActionKind>(kind));
    }
    std::mt19937 random(seed);  // its numbers are fixed by the language; those of distributions are not
    std::vector<Action> actions;
    for (int i = 0; i < count; ++i) {
        const ActionKind kind = urn[random() % urn.size()];
        actions.push_back({kind, static_cast<std::uint32_t>(random())});
    }
    return actions;
}

std::string Describe(const std::vector<Action>& actions) {
    std::string text;
    for (const Action& action : actions) {
        text += std::string("  ") + Name(action.kind) + " " + std::to_string(action.choice) + "\n";
    }
    return text;
}
