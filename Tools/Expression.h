#pragma once

#include "OrvUnstructGrid/ResultType.h"

#include <cstddef>
#include <string>
#include <vector>

namespace orvapp {

struct ExpressionFunction;

/// One step of an expression. Positions are bytes of the expression's text.
struct ExpressionNode {
    enum Kind {
        NUMBER,
        NAME, ///< A result of the file.
        CALL,
        INDEX, ///< operand[3]
        NEGATE,
        ADD,
        SUBTRACT,
        MULTIPLY,
        DIVIDE,
        CROSS
    };

    Kind kind;
    std::size_t begin; ///< Of the text of this step and its operands.
    std::size_t end;
    std::size_t at;                         ///< What a message about this step points at, such as its operator.
    std::vector<std::size_t> operands = {}; ///< Positions in Expression::nodes, all in front of this node.
    double number = 0;                      ///< Of a NUMBER or INDEX; of a CALL its INDEX, or 1 for true.
    std::string name = {};                  ///< Of a NAME.
    orv::ug::ResultType type = {};          ///< The type that a NAME asks for; NO_RESULT_TYPE for any.
    orv::ug::ResultMapping mapping =
        orv::ug::UNKNOWN_MAPPING;                 ///< The mapping that a NAME asks for; UNKNOWN_MAPPING for any.
    const ExpressionFunction* function = nullptr; ///< Of a CALL.
};

/// An expression that has been understood, in the order in which it is computed: the last node is the whole.
struct Expression {
    std::string text;
    std::vector<ExpressionNode> nodes;

    /// The text of a node.
    std::string textOf(const ExpressionNode& node) const;
};

/// How deep parentheses and calls may be nested.
constexpr std::size_t DEEPEST_NESTING = 200;

/// Understands an expression: `+ - * /` and `^`, the cross product, which binds strongest, then `* /`, then `+ -`, all
/// from left to right; signs in front of an operand; parentheses; numbers; names of results, see nextToken(), a name
/// with kinds behind it such as `STRESS:tensor:node` where several results share it; the functions of
/// expressionFunctions(); and an index in brackets behind an operand.
///
/// Throws ExpressionError. What types of results fit together is not looked at.
Expression parseExpression(const std::string& text);

} // namespace orvapp
