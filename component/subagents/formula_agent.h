#pragma once

#include <map>
#include <optional>

#include "component/host/kiln_expression_parser.h"

#include "component/agents/result_combining_agent.h"

/// A result computed from the results of other sub-agents with an arithmetic expression, once, after the run.
/// The expression names the agents in double quotes; in a name a backslash stands before a double quote and
/// before a backslash. In front of it "T:" makes the result a time, "N:" a number, without either it is of
/// the kind of the first agent named.
class MeroFormulaAgent : public MeroStaticResultCombiningAgent {
public:
    MeroFormulaAgent();

    int readDefinition(MeroKilnParser* parser) override;
    SV::String& getDefinitionText(SV::String& text) override;
    int setDefaultValues() override;
    [[nodiscard]] bool hasObjectResults(bool ignoreShowFlag) override;
    /// Evaluates the expression over the items of the first input that all others have, too.
    MeroAgentResultSet* getResultSet(const MeroResultRequest& request) override;
    int clearResults() override;
    int prepareRun(int analysis) override;

private:
    /// An input with its results, while the expression is evaluated.
    struct Input {
        MeroAgentResultSet* set;
        SV::String variable;
        double scale;

        /// Of an item: scaled, times in whole seconds.
        [[nodiscard]] MeroKilnValue valueOf(const MeroDoubleResultItem& item) const;
    };
    enum class Outcome { Added, Skipped, Failed, Impossible };

    /// Replaces each name by a variable of the same length. False, after a box for more names than letters,
    /// if the expression can't be taken apart.
    bool substituteVariables(SV::String& firstName);
    bool substituteName(std::size_t begin, std::size_t end, char& nextLetter);
    int refuseExpression(const SV::String& reason) const;
    bool decideResultKind(const SV::String& firstName);
    [[nodiscard]] std::optional<std::vector<Input>> collectInputs(const MeroResultRequest& request) const;
    [[nodiscard]] std::optional<SV::String> variableOf(const MeroAgentResultSet& set) const;
    Outcome evaluateItem(MeroKilnExpressionParser& parser, const std::vector<Input>& inputs,
                         const MeroDoubleResult& result, const MeroDoubleResultItem& item);
    MeroAgentResultSet* evaluate(const std::vector<Input>& inputs);
    void showNoResult() const;

    SV::String expression;                       ///< as written, with its prefix
    SV::String parsedExpression;                 ///< with variables for the names
    std::map<SV::String, SV::String> variables;  ///< by agent name
    bool expressionHidden = false;
    bool expressionLocked = false;
};
