#pragma once

#include "component/agents/measuring_agent.h"
#include "component/subagents/named_option.h"

/// The sum of one attribute of the objects that a process instance passes through, numeric or a time, as a
/// mean over the finished instances. An object counts when its pass ends. In all four analyses, on process
/// models.
class MeroAvgAttributeSumAgent : public MeroMeasuringAgent {
public:
    MeroAvgAttributeSumAgent();

    int readDefinition(MeroKilnParser* parser) override;
    SV::String& getDefinitionText(SV::String& text) override;
    int setDefaultValues() override;
    [[nodiscard]] bool isEqualToDefinition(const MeroKilnParser& parser) override;
    MeroAgentResultSet* getResultSet(const MeroResultRequest& request) override;
    bool releaseCalendar() override;
    /// False without one, as the next.
    bool getObjectClass(MeroId& id) const;
    bool getObjectAttribute(MeroId& id) const;

private:
    void registerObservedClasses() override;
    [[nodiscard]] ResultSetTraits getResultSetTraits() const override {
        return {ValueTypeSingle, ResultModeMean};
    }
    int checkConfiguration() override;
    int joinObjectsOf(const ISortedSet<MeroId>& calledModels) override;
    int objectsExtended() override;
    void enterCall(MeroAgentProcessInstance& process, const Call& call) override;
    [[nodiscard]] bool measuresAt(std::int32_t code) const override { return code == EventWorkEnd; }
    int measure(const MeroSimEvent& event) override;
    void emitInstance(MeroAgentProcessInstance& process, const InstanceEnd& end) override;
    void clearRunData() override { objectValues.clear(); }

    int readAttributeKeys(const MeroKilnParser& parser);
    int readValues(const ISortedSet<MeroId>& objects);
    /// A `MeroErrorCode`, after an internal error unless it is 1.
    int readValue(MeroId object, double& value) const;
    [[nodiscard]] bool addValue(MeroAgentProcessInstance& process, const SV::String& instanceKey,
                                MeroId model, MeroId object, double value);

    MeroNamedOption classOption{"class"};
    MeroNamedOption attributeOption{"attribute"};
    MeroKeyedTable<MeroId, double> objectValues;
};
