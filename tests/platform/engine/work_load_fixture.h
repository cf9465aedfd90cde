#pragma once

#include <gtest/gtest.h>

#include "platform/engine/simulation.h"
#include "tests/platform/engine/process_builder.h"
#include "tests/platform/engine/staff_builder.h"
#include "tests/platform/engine/staff_log.h"

namespace mero {

/// A repository with an environment "Staff", and runs of it that are written down.
class WorkLoadFixture : public testing::Test {
protected:
    WorkLoadFixture() { settings.analysis = Analysis::NonStaticWorkLoad; }

    static SV::String text(std::string_view content) { return SV::String(content); }

    RunSummary simulate() {
        settings.environment = staff.id();
        const auto simulation = Simulation::prepare(repository, settings);
        EXPECT_TRUE(simulation.isGood()) << simulation.error().text;
        if (!simulation) {
            return {};
        }
        problems = simulation.value().problems();
        ControlComponent control;
        control.setSink(&log);
        log.text.clear();
        return simulation.value().run(control);
    }
    RunSummary simulate(const ProcessBuilder& model, std::uint64_t instances) {
        settings.models = {model.id()};
        settings.instances = instances;
        return simulate();
    }
    std::string refusal() {
        settings.environment = staff.id();
        const auto simulation = Simulation::prepare(repository, settings);
        return simulation.isGood() ? "" : simulation.error().text;
    }

    Repository repository;
    StaffBuilder staff{repository, "Staff"};
    SimulationSettings settings;
    StaffLog log{repository};
    std::vector<std::string> problems;
};

}  // namespace mero
