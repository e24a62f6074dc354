#include "Tests/Tools/ExpressionPrinter.h"

#include "Tools/ExpressionFunctions.h"
#include "Tools/ExpressionTokens.h"
#include "Tools/NumberText.h"
#include "Tools/ResultWords.h"

#include <utility>

namespace orvtest {

namespace {

using orvapp::Expression;
using orvapp::ExpressionFunction;
using orvapp::ExpressionNode;

enum Strength { SUM, PRODUCT, CROSS_PRODUCT, SIGNED, OPERAND };

struct Text {
    std::string text;
    Strength strength;

    std::string atLeast(int wanted) const {
        return strength < wanted ? '(' + text + ')' : text;
    }
};

Text binary(char sign, Strength strength, const Text& left, const Text& right) {
    return {left.atLeast(strength) + sign + right.atLeast(strength + 1), strength};
}

Text nameText(const ExpressionNode& node) {
    std::string text = orvapp::quotedWhereNeeded(node.name);
    text += node.type == orv::ug::NO_RESULT_TYPE ? "" : std::string(":") + orvapp::typeWord(node.type);
    text += node.mapping == orv::ug::UNKNOWN_MAPPING ? "" : std::string(":") + orvapp::mappingWord(node.mapping);
    return {text, OPERAND};
}

Text callText(const ExpressionNode& node, const std::vector<Text>& texts) {
    std::string text = node.function->name;
    char separator = '(';
    for (const std::size_t operand : node.operands) {
        text += separator + texts[operand].text;
        separator = ',';
    }
    if (node.function->arguments == ExpressionFunction::RESULT_AND_INDEX) {
        text += ',' + orvapp::shortestNumber(node.number);
    }
    if (node.function->arguments == ExpressionFunction::RESULT_AND_FLAG) {
        text += node.number == 0 ? ",false" : ",true";
    }
    return {text + ')', OPERAND};
}

Text nodeText(const ExpressionNode& node, const std::vector<Text>& texts) {
    auto operand = [&](std::size_t i) { return texts[node.operands[i]]; };
    switch (node.kind) {
    case ExpressionNode::NUMBER:
        return {orvapp::shortestNumber(node.number), OPERAND};
    case ExpressionNode::NAME:
        return nameText(node);
    case ExpressionNode::CALL:
        return callText(node, texts);
    case ExpressionNode::INDEX:
        return {operand(0).atLeast(OPERAND) + '[' + orvapp::shortestNumber(node.number) + ']', OPERAND};
    case ExpressionNode::NEGATE:
        return {'-' + operand(0).atLeast(SIGNED), SIGNED};
    case ExpressionNode::ADD:
        return binary('+', SUM, operand(0), operand(1));
    case ExpressionNode::SUBTRACT:
        return binary('-', SUM, operand(0), operand(1));
    case ExpressionNode::MULTIPLY:
        return binary('*', PRODUCT, operand(0), operand(1));
    case ExpressionNode::DIVIDE:
        return binary('/', PRODUCT, operand(0), operand(1));
    case ExpressionNode::CROSS:
        return binary('^', CROSS_PRODUCT, operand(0), operand(1));
    }
    return {"?", OPERAND};
}

} // namespace

std::string printed(const Expression& expression) {
    std::vector<Text> texts;
    for (const ExpressionNode& node : expression.nodes) {
        texts.push_back(nodeText(node, texts));
    }
    return texts.back().text;
}

std::string identity(const ExpressionNode& node) {
    std::string text = std::to_string(node.kind) + ' ' + orvapp::shortestNumber(node.number) + ' ' + node.name + ' ' +
                       orvapp::typeWord(node.type) + ' ' + orvapp::mappingWord(node.mapping) + ' ' +
                       (node.function ? node.function->name : "");
    for (const std::size_t operand : node.operands) {
        text += ' ' + std::to_string(operand);
    }
    return text;
}

} // namespace orvtest
