#include "component/subagents/formula_agent.h"

#include <cmath>

#include "component/host/basic_services.h"

#include "component/management/general_services.h"
#include "component/management/message_text.h"

namespace {

constexpr SV::ResId DefaultName{0x2005014};
constexpr SV::ResId BadExpression{0x2005174};
constexpr SV::ResId NoResult{0x2005176};
constexpr SV::ResId InputsMissing{0x2005177};
constexpr SV::ResId EmptyExpression{0x2005186};
constexpr SV::ResId EvaluationFailed{0x2005187};
constexpr SV::ResId TooManyNames{0x2005188};

constexpr std::size_t PrefixLength = 2;

bool hasPrefix(const SV::String& expression) {
    return expression.view().starts_with("T:") || expression.view().starts_with("N:");
}

/// End of the name that begins behind the opening quote at `begin`: a quote behind an even number of
/// backslashes.
std::size_t findClosingQuote(const SV::String& text, std::size_t begin) {
    bool masked = false;
    for (std::size_t place = begin + 1; place < text.Len(); ++place) {
        if (masked) {
            masked = false;
        } else if (text[place] == '\\') {
            masked = true;
        } else if (text[place] == '"') {
            return place;
        }
    }
    return SV::String::NotFound;
}

}  // namespace

MeroFormulaAgent::MeroFormulaAgent() {
    agentType = AgentTypeFormula;
}

// Definition

int MeroFormulaAgent::setDefaultValues() {
    setCommonDefaultValues({.path = true, .volume = true, .staticWorkLoad = true, .nonStaticWorkLoad = true},
                           SV::String(DefaultName));
    valueKind = 4;
    for (bool* const flag :
         {&historyMemVisible, &historyMemEditable, &historyDiskVisible, &historyDiskEditable,
          &showResultVisible, &showResultEditable, &showHistory, &showHistoryVisible, &showHistoryEditable,
          &expressionHidden, &expressionLocked}) {
        *flag = false;
    }
    expression = {};
    return StatusOk;
}

int MeroFormulaAgent::readDefinition(MeroKilnParser* parser) {
    const int status = MeroStaticResultCombiningAgent::readDefinition(parser);
    if (parser == nullptr) {
        return status;
    }
    showResult = true;
    showResultVisible = false;
    showResultEditable = false;
    expression = parser->GetStrValue("expression");
    expressionHidden = parser->IsContained("hide-expression");
    expressionLocked = parser->IsContained("lock-expression");
    return status;
}

SV::String& MeroFormulaAgent::getDefinitionText(SV::String& text) {
    MeroStaticResultCombiningAgent::getDefinitionText(text);
    if (!expression.IsEmpty()) {
        text += "\n expression:" + MeroKilnParser::GetKilnTextOfStrValue(expression);
    }
    if (expressionHidden) {
        text += "\n hide-expression";
    }
    if (expressionLocked) {
        text += "\n lock-expression";
    }
    appendInputs(text);
    return text;
}

// Preparation

int MeroFormulaAgent::prepareRun(int analysis) {
    if (!isActiveInAnalysis(analysis)) {
        return StatusOutsideAnalysis;
    }
    analysisType = analysis;
    if (expression.IsEmpty()) {
        showInfoBox(SV::String(EmptyExpression) + name);
        return StatusBadExpression;
    }
    int count = 0;
    if (!resolveInputs(count)) {
        showErrorBox(SV::String(InputsMissing) + "\"" + name + "\"\n\n");
        inputAgents.clear();
        return StatusInputMissing;
    }
    SV::String firstName;
    if (!substituteVariables(firstName)) {
        return refuseExpression({});
    }
    SV::String reason;
    if (MeroKilnExpressionParser().SetExpression(parsedExpression, reason) != 0) {
        return refuseExpression(reason);
    }
    if (!decideResultKind(firstName)) {
        displayErrorMessage("aeasubag", __LINE__);
        return StatusRefused;
    }
    runPrepared = true;
    agentState = AgentRunning;
    return StatusOk;
}

int MeroFormulaAgent::refuseExpression(const SV::String& reason) const {
    showErrorBox(SV::String(BadExpression) + "\"" + name + "\"\n\n" + reason);
    return StatusBadExpression;
}

bool MeroFormulaAgent::substituteVariables(SV::String& firstName) {
    variables.clear();
    parsedExpression = expression;
    // Blanks stand for the prefix, and variables are as long as what they stand for: places in the text stay
    // those of the expression as written.
    if (hasPrefix(expression)) {
        SV::String blanks;
        blanks.Fill(PrefixLength, ' ');
        parsedExpression.Erase(0, PrefixLength);
        parsedExpression.Insert(blanks, 0);
    }
    char nextLetter = 'a';
    for (std::size_t begin = parsedExpression.Search("\""); begin != SV::String::NotFound;
         begin = parsedExpression.Search("\"", begin)) {
        const std::size_t end = findClosingQuote(parsedExpression, begin);
        if (end == SV::String::NotFound) {
            return false;
        }
        const SV::String agentName(parsedExpression.view().substr(begin + 1, end - begin - 1));
        if (firstName.IsEmpty()) {
            firstName = Mero_Unmask(agentName, '\\');
        }
        if (!substituteName(begin, end, nextLetter)) {
            return false;
        }
    }
    return true;
}

bool MeroFormulaAgent::substituteName(std::size_t begin, std::size_t end, char& nextLetter) {
    const std::size_t length = end - begin + 1;
    const SV::String quoted(parsedExpression.view().substr(begin, length));
    const SV::String agentName = Mero_Unmask(SV::String(quoted.view().substr(1, length - 2)), '\\');
    const auto [place, isNew] = variables.try_emplace(agentName);
    if (isNew) {
        if (nextLetter > 'z') {
            showErrorBox(fillMessage(TooManyNames, {{"%s", name}}));
            return false;
        }
        place->second.Fill(quoted.CountCodePoints(), nextLetter++);
    }
    parsedExpression.Erase(begin, length);
    parsedExpression.Insert(place->second, begin);
    return true;
}

bool MeroFormulaAgent::decideResultKind(const SV::String& firstName) {
    if (hasPrefix(expression)) {
        resultKind = expression[0] == 'T' ? ResultKindTime : ResultKindNumber;
        return true;
    }
    for (MeroAtomarAgent* const input : inputAgents) {
        SV::String inputName;
        input->getName(inputName);
        if (inputName == firstName) {
            resultKind = input->getResultKind();
            return true;
        }
    }
    return false;
}

int MeroFormulaAgent::clearResults() {
    resultSet.reset();
    limitedResultSet.reset();
    runPrepared = false;
    agentState = AgentIdle;
    parsedExpression = {};
    inputAgents.clear();
    variables.clear();
    return StatusOk;
}

// Results

bool MeroFormulaAgent::hasObjectResults(bool ignoreShowFlag) {
    return (showResult || ignoreShowFlag) && !inputAgents.empty();
}

void MeroFormulaAgent::showNoResult() const {
    showErrorBox(fillMessage(NoResult, {{"%s", name}}));
}

std::optional<SV::String> MeroFormulaAgent::variableOf(const MeroAgentResultSet& set) const {
    SV::String agentName;
    set.getName(agentName);
    const auto found = variables.find(agentName);
    return found != variables.end() ? std::optional(found->second) : std::nullopt;
}

MeroKilnValue MeroFormulaAgent::Input::valueOf(const MeroDoubleResultItem& item) const {
    const double value = item.getValue() * scale;
    return MeroKilnValue(set->getResultKind() == ResultKindTime ? std::floor(value + 0.5) : value);
}

std::optional<std::vector<MeroFormulaAgent::Input>> MeroFormulaAgent::collectInputs(
    const MeroResultRequest& request) const {
    std::vector<Input> inputs;
    for (MeroAtomarAgent* const agent : inputAgents) {
        MeroAgentResultSet* const set = agent->getResultSet(request);
        if (set == nullptr) {
            showNoResult();
            return std::nullopt;
        }
        inputs.push_back(
            {set, variableOf(*set).value_or(SV::String()), set->isSingleValue() ? request.scale : 1.0});
    }
    return inputs;
}

MeroAgentResultSet* MeroFormulaAgent::getResultSet(const MeroResultRequest& request) {
    if (inputAgents.empty()) {
        return nullptr;
    }
    const MeroWaitCursor wait;
    const std::optional<std::vector<Input>> inputs = collectInputs(request);
    return inputs ? evaluate(*inputs) : nullptr;
}

MeroAgentResultSet* MeroFormulaAgent::evaluate(const std::vector<Input>& inputs) {
    resultSet = std::make_unique<MeroAgentResultSet>(resultKind, name, ValueTypeSingle, showResult,
                                                     AnalysisPath, ResultModeSum);
    MeroKilnExpressionParser parser;
    SV::String error;
    if (parser.SetExpression(parsedExpression, error) != 0 || inputs.front().variable.IsEmpty()) {
        displayErrorMessage("aeasubag", __LINE__);
        return nullptr;
    }
    bool anyAdded = false;
    bool anyFailed = false;
    for (const MeroDoubleResult* const result : inputs.front().set->getResults(true)) {
        for (const auto& item : result->getItems()) {
            const Outcome outcome = evaluateItem(parser, inputs, *result, *item);
            if (outcome == Outcome::Impossible) {
                displayErrorMessage("aeasubag", __LINE__);
                return nullptr;
            }
            anyAdded = anyAdded || outcome == Outcome::Added;
            anyFailed = anyFailed || outcome == Outcome::Failed;
        }
    }
    if (anyFailed) {
        showInfoBox(SV::String(EvaluationFailed) + name);
    } else if (!anyAdded) {
        showNoResult();
        return nullptr;
    }
    return resultSet.get();
}

MeroFormulaAgent::Outcome MeroFormulaAgent::evaluateItem(MeroKilnExpressionParser& parser,
                                                         const std::vector<Input>& inputs,
                                                         const MeroDoubleResult& result,
                                                         const MeroDoubleResultItem& item) {
    MeroKilnValueSet values;
    for (const Input& input : inputs) {
        const bool isLead = &input == &inputs.front();
        const MeroDoubleResultItem* const inputItem =
            isLead ? &item : input.set->findItem(item.getPath(), result.getItemKey());
        if (inputItem == nullptr) {
            return Outcome::Skipped;
        }
        if (input.variable.IsEmpty()) {
            return Outcome::Impossible;
        }
        values.OldMoveValue(input.variable, input.valueOf(*inputItem), true);
    }
    MeroKilnValue value;
    SV::String error;
    if (parser.Evaluate(values, value, error, true, true) != 0) {
        return Outcome::Failed;
    }
    const bool added = resultSet->addValue({.objectId = result.getObjectId(),
                                            .path = item.getPath(),
                                            .itemKey = result.getItemKey(),
                                            .value = value.asDouble(),
                                            .history = MeroHistoryUse::Left,
                                            .sourceAgentType = result.getSourceAgentType()});
    return added ? Outcome::Added : Outcome::Impossible;
}
