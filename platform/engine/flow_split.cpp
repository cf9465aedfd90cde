#include "platform/engine/flow_split.h"

#include <algorithm>
#include <fmt/format.h>
#include <numeric>
#include <span>

namespace mero {

namespace {

class FlowSplit {
public:
    FlowSplit(ProcessModel& splitModel, ProcessNode& splitNode)
        : model(splitModel),
          node(splitNode),
          flows(std::span(splitModel.flows).subspan(splitNode.firstFlow, splitNode.flowCount)) {}

    std::vector<std::string> decide(GatewayKind gateway) {
        clampProbabilities();
        switch (gateway) {
            case GatewayKind::Parallel:
                break;
            case GatewayKind::Exclusive:
                chooseOne();
                break;
            case GatewayKind::Inclusive:
                chooseSome();
                break;
            case GatewayKind::EventBased:
                race();
                break;
            case GatewayKind::None:
                leaveWithoutGateway();
                break;
        }
        return std::move(oddities);
    }

private:
    [[nodiscard]] double sum() const {
        return std::accumulate(flows.begin(), flows.end(), 0.0, [](double before, const ProcessFlow& flow) {
            return before + flow.probability;
        });
    }
    [[nodiscard]] bool isAnyGiven() const {
        return std::any_of(flows.begin(), flows.end(), [](const ProcessFlow& flow) { return flow.isGiven; });
    }

    void clampProbabilities() {
        for (ProcessFlow& flow : flows) {
            if (flow.probability < 0.0 || flow.probability > 1.0) {
                oddities.emplace_back("has an outgoing flow whose probability isn't between 0 and 1");
                flow.probability = std::clamp(flow.probability, 0.0, 1.0);
            }
        }
    }

    void chooseOne() {
        node.split = SplitRule::One;
        const double rest = std::max(0.0, 1.0 - sum());
        const auto byDefault =
            std::find_if(flows.begin(), flows.end(), [](const ProcessFlow& flow) { return flow.isDefault; });
        if (!shareOut(rest) && byDefault != flows.end()) {
            byDefault->probability += rest;
        }
        normalise();
    }

    void chooseSome() {
        node.split = SplitRule::Some;
        shareOut(std::max(0.0, 1.0 - sum()));
        const bool isBarred = std::all_of(flows.begin(), flows.end(), [](const ProcessFlow& flow) {
            return flow.probability <= 0.0 && !flow.isDefault;
        });
        if (isBarred && !flows.empty()) {
            oddities.emplace_back(NeverTaken);
        }
    }

    /// The flows without a probability get equal parts; false if there are none.
    bool shareOut(double rest) {
        const auto missing =
            std::count_if(flows.begin(), flows.end(), [](const ProcessFlow& flow) { return !flow.isGiven; });
        if (missing == 0) {
            return false;
        }
        const double share = rest / static_cast<double>(missing);
        bool isTold = false;
        for (ProcessFlow& flow : flows) {
            if (!flow.isGiven) {
                flow.probability = share;
                // The default flow of an inclusive gateway is taken when no other is.
                isTold |= node.split == SplitRule::One || !flow.isDefault;
            }
        }
        if (isTold && flows.size() > 1) {
            oddities.push_back(
                missing == 1
                    ? fmt::format("has an outgoing flow without a probability, which gets {:g}", share)
                    : fmt::format("has {} outgoing flows without a probability, each of "
                                  "which gets {:g}",
                                  missing, share));
        }
        return true;
    }

    void normalise() {
        const double total = sum();
        if (flows.empty()) {
            return;
        }
        if (total <= 0.0) {
            oddities.emplace_back(NeverTaken);
            return;
        }
        if (total > 1.0 + Tolerance || total < 1.0 - Tolerance) {
            oddities.push_back(
                fmt::format("has probabilities that make up {}, and are taken in proportion", total));
        }
        for (ProcessFlow& flow : flows) {
            flow.probability /= total;
        }
    }

    /// What comes first can be told only where every target says when it comes.
    void race() {
        const auto isKnown = [this](const ProcessFlow& flow) {
            const ProcessNode& target = model.nodes[flow.target];
            return target.awaitsMessage || !target.work.isZero();
        };
        if (flows.size() > 1 && std::all_of(flows.begin(), flows.end(), isKnown)) {
            node.split = SplitRule::Race;
            if (isAnyGiven()) {
                oddities.emplace_back("has probabilities that aren't used: what comes first decides");
            }
            return;
        }
        if (flows.size() > 1 && std::any_of(flows.begin(), flows.end(), isKnown)) {
            oddities.emplace_back(
                "leads to an event with neither a time nor a message that is sent: which one comes is chosen "
                "by probability");
        }
        chooseOne();
    }

    void leaveWithoutGateway() {
        node.split = SplitRule::All;
        if (flows.size() < 2 || !isAnyGiven()) {
            return;
        }
        if (sum() <= 1.0 + Tolerance) {
            chooseOne();
            return;
        }
        node.split = SplitRule::Some;
        for (ProcessFlow& flow : flows) {
            if (!flow.isGiven && !flow.isDefault) {
                oddities.emplace_back("has an outgoing flow without a probability, which is always taken");
                flow.probability = 1.0;
            }
        }
    }

    static constexpr double Tolerance = 1e-6;
    static constexpr auto NeverTaken = "has no outgoing flow with a probability above 0, and takes the first";

    ProcessModel& model;
    ProcessNode& node;
    std::span<ProcessFlow> flows;
    std::vector<std::string> oddities;
};

}  // namespace

std::vector<std::string> decideSplit(ProcessModel& model, ProcessNode& node, GatewayKind gateway) {
    return FlowSplit(model, node).decide(gateway);
}

}  // namespace mero
