#include "Tools/ExpressionResult.h"

#include "OrvApp/ResultOperators.h"
#include "OrvCore/Defines.h"
#include "Tools/DisplayText.h"
#include "Tools/Expression.h"
#include "Tools/ExpressionError.h"
#include "Tools/ExpressionFunctions.h"
#include "Tools/ExpressionTokens.h"
#include "Tools/ItemFunctions.h"
#include "Tools/Names.h"
#include "Tools/NumberText.h"
#include "Tools/ResultWords.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <variant>

namespace orvapp {

namespace {

using orv::ug::ResultInfo;
using Kind = ExpressionNode::Kind;

/// What a step gives: a number, a result, or results to choose from by an index.
using Value = std::variant<double, ResultInfo, std::vector<ResultInfo>>;

constexpr std::size_t LONGEST_NAME = 60;

class NumberFunction : public orv::app::MathFunctionCallBack {
public:
    explicit NumberFunction(std::function<double(double)> function)
        : MathFunctionCallBack(""), m_function(std::move(function)) {}

    double evaluate(double value) override {
        return m_function(value);
    }

private:
    std::function<double(double)> m_function;
};

std::string kindText(const ResultInfo& info) {
    return std::string("a ") + typeWord(info.type());
}

/// As an expression names it: STRESS:tensor:node
std::string fullName(const ResultInfo& info) {
    return quotedWhereNeeded(info.name().toStdString()) + ':' + typeWord(info.type()) + ':' +
           mappingWord(info.resultMapping());
}

/// "a tensor", "a vector or displacement"; "a result" for all types.
std::string typesText(std::span<const orv::ug::ResultType> types) {
    if (types.size() == 4) {
        return "a result";
    }
    std::string text = "a ";
    for (std::size_t i = 0; i < types.size(); ++i) {
        text += i == 0 ? "" : i + 1 < types.size() ? ", " : " or ";
        text += typeWord(types[i]);
    }
    return text;
}

const char* signOf(Kind kind) {
    switch (kind) {
    case ExpressionNode::ADD:
        return "+";
    case ExpressionNode::SUBTRACT:
        return "-";
    case ExpressionNode::MULTIPLY:
        return "*";
    case ExpressionNode::DIVIDE:
        return "/";
    default:
        return "^";
    }
}

/// Goes through the nodes once; operands stand in front of what uses them.
class Builder {
public:
    Builder(const Expression& expression, const std::vector<ResultInfo>& results)
        : m_expression(expression), m_results(results) {
        for (const ResultInfo& info : results) {
            m_names.push_back(info.name().toStdString());
        }
    }

    ExpressionResult build() {
        for (const ExpressionNode& node : m_expression.nodes) {
            Value value = valueOf(node);
            if (ResultInfo* info = std::get_if<ResultInfo>(&value); info && node.kind != ExpressionNode::NAME) {
                info->setName(briefText(node));
            }
            m_values.push_back(std::move(value));
        }
        const ExpressionNode& whole = m_expression.nodes.back();
        m_result.info = resultAt(m_expression.nodes.size() - 1, whole.begin, "a result is wanted");
        return std::move(m_result);
    }

private:
    Value valueOf(const ExpressionNode& node) {
        switch (node.kind) {
        case ExpressionNode::NUMBER:
            return node.number;
        case ExpressionNode::NAME:
            return named(node);
        case ExpressionNode::CALL:
            return called(node);
        case ExpressionNode::INDEX:
            return indexed(node);
        case ExpressionNode::NEGATE:
            return negated(node);
        default:
            return combined(node);
        }
    }

    // Names

    ResultInfo named(const ExpressionNode& node) const {
        std::vector<ResultInfo> namesakes;
        for (std::size_t i = 0; i < m_names.size(); ++i) {
            if (m_names[i] == node.name) {
                namesakes.push_back(m_results[i]);
            }
        }
        if (namesakes.empty()) {
            refuse(node.at, "there is no result \"" + node.name + '"' + didYouMean(m_names, node.name) +
                                (m_names.empty() ? "" : " (results: " + listed(m_names) + ")"));
        }
        return chosen(node, namesakes);
    }

    ResultInfo chosen(const ExpressionNode& node, const std::vector<ResultInfo>& namesakes) const {
        std::vector<ResultInfo> fitting;
        std::vector<std::string> fullNames;
        for (const ResultInfo& info : namesakes) {
            fullNames.push_back(fullName(info));
            if ((node.type == orv::ug::NO_RESULT_TYPE || node.type == info.type()) &&
                (node.mapping == orv::ug::UNKNOWN_MAPPING || node.mapping == info.resultMapping())) {
                fitting.push_back(info);
            }
        }
        if (fitting.empty()) {
            refuse(node.at, "there is no " + m_expression.textOf(node) + ", only " + plainList(fullNames));
        }
        if (fitting.size() > 1) {
            refuse(node.at, m_expression.textOf(node) + " stands for " + std::to_string(fitting.size()) +
                                " results, tell which by its kind: " + plainList(fullNames));
        }
        return fitting.front();
    }

    static std::string plainList(const std::vector<std::string>& texts) {
        std::string list;
        for (const std::string& text : texts) {
            list += (list.empty() ? "" : ", ") + text;
        }
        return list;
    }

    // Operators

    Value negated(const ExpressionNode& node) const {
        const std::size_t operand = node.operands.front();
        if (const double* number = std::get_if<double>(&m_values[operand])) {
            return -*number;
        }
        return negative(resultAt(operand, node.at, "\"-\" takes a result or a number"));
    }

    Value combined(const ExpressionNode& node) {
        const Value& left = m_values[node.operands[0]];
        const Value& right = m_values[node.operands[1]];
        const double* leftNumber = std::get_if<double>(&left);
        const double* rightNumber = std::get_if<double>(&right);
        if (node.kind == ExpressionNode::CROSS && (leftNumber || rightNumber)) {
            refuse(node.at, "\"^\" is the cross product of two vectors; a power is pow(A, 2)");
        }
        if (leftNumber && rightNumber) {
            return finite(node, ofNumbers(node, *leftNumber, *rightNumber));
        }
        const std::string wanted = std::string("\"") + signOf(node.kind) + "\" takes a result or a number";
        if (rightNumber) {
            return withNumber(node, resultAt(node.operands[0], node.at, wanted), *rightNumber);
        }
        if (leftNumber) {
            return numberWith(node, *leftNumber, resultAt(node.operands[1], node.at, wanted));
        }
        return ofResults(node, resultAt(node.operands[0], node.at, wanted),
                         resultAt(node.operands[1], node.at, wanted));
    }

    double ofNumbers(const ExpressionNode& node, double left, double right) const {
        switch (node.kind) {
        case ExpressionNode::ADD:
            return left + right;
        case ExpressionNode::SUBTRACT:
            return left - right;
        case ExpressionNode::MULTIPLY:
            return left * right;
        default:
            return left / divisor(node, right);
        }
    }

    ResultInfo withNumber(const ExpressionNode& node, const ResultInfo& left, double right) const {
        switch (node.kind) {
        case ExpressionNode::ADD:
            return left + right;
        case ExpressionNode::SUBTRACT:
            return left - right;
        case ExpressionNode::MULTIPLY:
            return left * right;
        default:
            return left / divisor(node, right);
        }
    }

    ResultInfo numberWith(const ExpressionNode& node, double left, const ResultInfo& right) {
        switch (node.kind) {
        case ExpressionNode::ADD:
            return right + left;
        case ExpressionNode::SUBTRACT:
            return negative(right) + left;
        case ExpressionNode::MULTIPLY:
            return right * left;
        default:
            break;
        }
        if (right.type() != orv::ug::SCALAR) {
            refuse(node.at, "a number can be divided by a scalar only, and " + described(node.operands[1]));
        }
        return mapped(right, [left](double value) { return value == 0 ? orv::UNDEFINED_DOUBLE : left / value; });
    }

    ResultInfo ofResults(const ExpressionNode& node, const ResultInfo& left, const ResultInfo& right) const {
        checkTypes(node, left.type());
        checkAlike(node, node.operands, std::string("\"") + signOf(node.kind) + '"');
        switch (node.kind) {
        case ExpressionNode::ADD:
            return left + right;
        case ExpressionNode::SUBTRACT:
            return left - right;
        case ExpressionNode::MULTIPLY:
            return left * right;
        case ExpressionNode::DIVIDE:
            return left / right;
        default:
            return withMissing(left ^ right, {left, right}, Missing::BY_ITEM);
        }
    }

    /// The types that an operator takes at all.
    void checkTypes(const ExpressionNode& node, orv::ug::ResultType type) const {
        const std::size_t first = node.operands.front();
        if (node.kind == ExpressionNode::MULTIPLY && type == orv::ug::SYMMETRIC_TENSOR) {
            refuse(node.at, "\"*\" multiplies scalars, and vectors to their dot product, and " + described(first));
        }
        if (node.kind == ExpressionNode::DIVIDE && type != orv::ug::SCALAR) {
            refuse(node.at, "\"/\" divides by numbers, and scalars by scalars, and " + described(first));
        }
        if (node.kind == ExpressionNode::CROSS && type != orv::ug::VECTOR) {
            refuse(node.at, "\"^\" is the cross product of two vectors, and " + described(first));
        }
    }

    /// One type and one mapping for all.
    void checkAlike(const ExpressionNode& node, const std::vector<std::size_t>& operands,
                    const std::string& what) const {
        const ResultInfo& first = std::get<ResultInfo>(m_values[operands.front()]);
        for (const std::size_t operand : operands) {
            const ResultInfo& other = std::get<ResultInfo>(m_values[operand]);
            if (other.type() != first.type()) {
                refuse(node.at, what + " takes results of one type: " + described(operands.front()) + ", and " +
                                    described(operand));
            }
            if (other.resultMapping() != first.resultMapping()) {
                refuse(node.at, what + " takes results in the same places: " + located(operands.front()) + ", and " +
                                    located(operand));
            }
        }
    }

    double divisor(const ExpressionNode& node, double value) const {
        if (value == 0) {
            refuse(node.at, "this divides by zero");
        }
        return value;
    }

    double finite(const ExpressionNode& node, double value) const {
        if (!std::isfinite(value)) {
            refuse(node.at, "this gives " + shortestNumber(value) + ", which is no number to go on with");
        }
        return value;
    }

    // Functions

    Value called(const ExpressionNode& node) {
        const ExpressionFunction& function = *node.function;
        if (function.ofNumber) {
            return calledOnNumbers(node, function);
        }
        std::vector<ResultInfo> arguments;
        for (const std::size_t operand : node.operands) {
            arguments.push_back(argumentAt(node, operand));
        }
        checkAlike(node, node.operands, function.name);
        checkIndex(node, arguments.front());
        std::vector<ResultInfo> results = function.ofResults(arguments, node.number);
        return results.size() == 1 ? Value(results.front()) : Value(std::move(results));
    }

    Value calledOnNumbers(const ExpressionNode& node, const ExpressionFunction& function) {
        double parameter = 0;
        if (function.arguments == ExpressionFunction::RESULT_AND_NUMBER) {
            parameter = numberAt(node.operands[1], function.signature() + " takes a number");
        }
        if (const double* number = std::get_if<double>(&m_values[node.operands[0]])) {
            return finite(node, function.ofNumber(*number, parameter));
        }
        return mapped(argumentAt(node, node.operands[0]),
                      [ofNumber = function.ofNumber, parameter](double value) { return ofNumber(value, parameter); });
    }

    ResultInfo argumentAt(const ExpressionNode& call, std::size_t operand) const {
        const ExpressionFunction& function = *call.function;
        const std::string wanted = std::string(function.name) + " takes " + typesText(function.types);
        const std::size_t at = beginOf(operand);
        const ResultInfo& info = resultAt(operand, at, wanted);
        if (std::find(function.types.begin(), function.types.end(), info.type()) == function.types.end()) {
            refuse(at, wanted + ", and " + described(operand));
        }
        if (function.mapping != orv::ug::UNKNOWN_MAPPING && function.mapping != info.resultMapping()) {
            refuse(at, std::string(function.name) + " takes a result per " + mappingWord(function.mapping) + ", and " +
                           located(operand));
        }
        return info;
    }

    void checkIndex(const ExpressionNode& call, const ResultInfo& argument) const {
        const std::vector<std::string> components = componentNames(argument.type());
        if (call.function->arguments == ExpressionFunction::RESULT_AND_INDEX &&
            call.number >= double(components.size())) {
            refuse(call.at, kindText(argument) + " has the components 0 to " + std::to_string(components.size() - 1) +
                                ", and no " + shortestNumber(call.number));
        }
    }

    Value indexed(const ExpressionNode& node) const {
        const auto* list = std::get_if<std::vector<ResultInfo>>(&m_values[node.operands.front()]);
        if (!list) {
            refuse(node.at, "an index chooses from principals(...), and from nothing else");
        }
        if (node.number >= double(list->size())) {
            refuse(node.at, "there is no [" + shortestNumber(node.number) + "]; " + principalsText());
        }
        return (*list)[std::size_t(node.number)];
    }

    ResultInfo mapped(const ResultInfo& info, std::function<double(double)> function) {
        m_result.callbacks.push_back(std::make_unique<NumberFunction>(std::move(function)));
        return createMathFunctionResult(info, m_result.callbacks.back().get());
    }

    // What stands at an operand

    /// Throws when it is something else, with `wanted` in front of what it is.
    const ResultInfo& resultAt(std::size_t operand, std::size_t at, const std::string& wanted) const {
        const Value& value = m_values[operand];
        refuseList(operand);
        if (std::holds_alternative<double>(value)) {
            refuse(at, wanted + ", and " + described(operand));
        }
        return std::get<ResultInfo>(value);
    }

    double numberAt(std::size_t operand, const std::string& wanted) const {
        const Value& value = m_values[operand];
        refuseList(operand);
        if (std::holds_alternative<ResultInfo>(value)) {
            refuse(beginOf(operand), wanted + ", and " + described(operand));
        }
        return std::get<double>(value);
    }

    void refuseList(std::size_t operand) const {
        if (std::holds_alternative<std::vector<ResultInfo>>(m_values[operand])) {
            refuse(beginOf(operand), principalsText());
        }
    }

    static std::string principalsText() {
        return "principals(...) gives six results, choose one by its index: [0], [1], [2] are the directions of the "
               "first, second and third principal value, [3], [4], [5] the values";
    }

    std::size_t beginOf(std::size_t operand) const {
        return m_expression.nodes[operand].begin;
    }

    /// "STRESS is a tensor"
    std::string described(std::size_t operand) const {
        const ResultInfo* info = std::get_if<ResultInfo>(&m_values[operand]);
        return briefText(m_expression.nodes[operand]) + " is " + (info ? kindText(*info) : "a number");
    }

    /// "STRESS is per node"
    std::string located(std::size_t operand) const {
        return briefText(m_expression.nodes[operand]) + " is per " +
               mappingWord(std::get<ResultInfo>(m_values[operand]).resultMapping());
    }

    /// The text of a node, shortened. It does not read through a long one, which is asked for at each of its nodes.
    std::string briefText(const ExpressionNode& node) const {
        constexpr std::size_t BYTES_PER_COLUMN = 4;
        const std::size_t size = std::min(node.end - node.begin, BYTES_PER_COLUMN * LONGEST_NAME + 1);
        return shortened(std::string_view(m_expression.text).substr(node.begin, size), LONGEST_NAME);
    }

    [[noreturn]] void refuse(std::size_t at, const std::string& message) const {
        throw ExpressionError(m_expression.text, at, message);
    }

    const Expression& m_expression;
    const std::vector<ResultInfo>& m_results;
    std::vector<std::string> m_names; ///< Of the results.
    std::vector<Value> m_values;      ///< Of the nodes so far.
    ExpressionResult m_result;
};

} // namespace

ExpressionResult buildResult(const Expression& expression, const std::vector<ResultInfo>& results) {
    return Builder(expression, results).build();
}

ExpressionResult buildScalar(const Expression& expression, const std::vector<orv::ug::ResultInfo>& results,
                             const std::string& shower) {
    ExpressionResult built = buildResult(expression, results);
    const orv::ug::ResultType type = built.info.type();
    if (type != orv::ug::SCALAR) {
        const std::string& text = expression.text;
        const char* function = type == orv::ug::SYMMETRIC_TENSOR ? "vonMises(" : "l2Norm(";
        throw CommandError(text + " is a " + typeWord(type) + ", and " + shower + " a scalar: take " + function + text +
                           ") or extractComponent(" + text + ", 0)");
    }
    return built;
}

} // namespace orvapp
