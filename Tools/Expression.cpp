#include "Tools/Expression.h"

#include "Tools/DisplayText.h"
#include "Tools/ExpressionError.h"
#include "Tools/ExpressionFunctions.h"
#include "Tools/ExpressionTokens.h"
#include "Tools/Names.h"
#include "Tools/ResultWords.h"

#include <cmath>
#include <iterator>
#include <utility>

namespace orvapp {

namespace {

struct BinaryOperator {
    char sign;
    ExpressionNode::Kind kind;
    int precedence;
};

constexpr BinaryOperator BINARY_OPERATORS[] = {{'+', ExpressionNode::ADD, 0},
                                               {'-', ExpressionNode::SUBTRACT, 0},
                                               {'*', ExpressionNode::MULTIPLY, 1},
                                               {'/', ExpressionNode::DIVIDE, 1},
                                               {'^', ExpressionNode::CROSS, 2}};

std::vector<std::string> functionNames() {
    std::vector<std::string> names;
    for (const ExpressionFunction& function : expressionFunctions()) {
        names.emplace_back(function.name);
    }
    return names;
}

/// Recursive descent. Whatever the text repeats without nesting is a loop, so the stack is bounded by the nesting.
class Parser {
public:
    explicit Parser(const std::string& text) : m_token(nextToken(text, 0)) {
        m_expression.text = text;
    }

    Expression parse() {
        if (m_token.kind == ExpressionToken::END) {
            refuse("it is empty; name a result, as in l2Norm(DISP)");
        }
        parseBinary(0);
        if (m_token.kind != ExpressionToken::END) {
            expected("an operator or the end");
        }
        return std::move(m_expression);
    }

private:
    /// Operators of this precedence and higher ones between operands. Gives the node of the last of them.
    std::size_t parseBinary(int lowest) {
        std::size_t left = parseSigned();
        while (const BinaryOperator* found = binaryOperator()) {
            if (found->precedence < lowest) {
                break;
            }
            const std::size_t at = take().begin;
            const std::size_t right = parseBinary(found->precedence + 1);
            left = add({found->kind, node(left).begin, node(right).end, at, {left, right}});
        }
        return left;
    }

    const BinaryOperator* binaryOperator() const {
        for (const BinaryOperator& candidate : BINARY_OPERATORS) {
            if (isSign(candidate.sign)) {
                return &candidate;
            }
        }
        return nullptr;
    }

    std::size_t parseSigned() {
        std::vector<std::size_t> minusSigns;
        while (isSign('+') || isSign('-')) {
            const ExpressionToken sign = take();
            if (sign.sign == '-') {
                minusSigns.push_back(sign.begin);
            }
        }
        std::size_t operand = parseIndexed();
        for (auto sign = minusSigns.rbegin(); sign != minusSigns.rend(); ++sign) {
            operand = add({ExpressionNode::NEGATE, *sign, node(operand).end, *sign, {operand}});
        }
        return operand;
    }

    std::size_t parseIndexed() {
        std::size_t operand = parseOperand();
        while (isSign('[')) {
            const std::size_t at = take().begin;
            const double index = takeIndex();
            const std::size_t end = takeSign(']', "").end;
            operand = add({ExpressionNode::INDEX, node(operand).begin, end, at, {operand}, index});
        }
        return operand;
    }

    std::size_t parseOperand() {
        if (isSign('(')) {
            return parseGroup();
        }
        if (m_token.kind == ExpressionToken::NUMBER) {
            const ExpressionToken number = take();
            return add({ExpressionNode::NUMBER, number.begin, number.end, number.begin, {}, number.number});
        }
        if (m_token.kind == ExpressionToken::WORD || m_token.kind == ExpressionToken::QUOTED) {
            const ExpressionToken name = take();
            return name.kind == ExpressionToken::WORD && isSign('(') ? parseCall(name) : parseName(name);
        }
        expected("a result, a number or a function");
    }

    std::size_t parseGroup() {
        enter();
        const ExpressionToken open = take();
        const std::size_t inner = parseBinary(0);
        const ExpressionToken close = takeSign(')', " for the \"(\" in column " + std::to_string(column(open.begin)));
        leave();
        node(inner).begin = open.begin;
        node(inner).end = close.end;
        return inner;
    }

    std::size_t parseName(const ExpressionToken& token) {
        ExpressionNode name{ExpressionNode::NAME, token.begin, token.end, token.begin};
        name.name = token.name;
        while (isSign(':')) {
            take();
            if (!setKind(&name)) {
                refuseKind();
            }
            name.end = take().end;
        }
        return add(std::move(name));
    }

    /// False when the token is no kind, or a second one of its sort.
    bool setKind(ExpressionNode* name) const {
        if (m_token.kind != ExpressionToken::WORD) {
            return false;
        }
        const orv::ug::ResultType type = typeOfWord(m_token.name);
        const orv::ug::ResultMapping mapping = mappingOfWord(m_token.name);
        if (type != orv::ug::NO_RESULT_TYPE && name->type == orv::ug::NO_RESULT_TYPE) {
            name->type = type;
            return true;
        }
        if (mapping != orv::ug::UNKNOWN_MAPPING && name->mapping == orv::ug::UNKNOWN_MAPPING) {
            name->mapping = mapping;
            return true;
        }
        return false;
    }

    [[noreturn]] void refuseKind() const {
        expected("one of scalar, vector, displacement, tensor and one of node, element, element_node, element_surface");
    }

    std::size_t parseCall(const ExpressionToken& name) {
        const ExpressionFunction* function = findExpressionFunction(name.name);
        if (!function) {
            const std::vector<std::string> names = functionNames();
            throw ExpressionError(m_expression.text, name.begin,
                                  "there is no function \"" + name.name + '"' + didYouMean(names, name.name) +
                                      " (functions: " + listed(names, names.size()) + ")");
        }
        enter();
        take();
        ExpressionNode call{ExpressionNode::CALL, name.begin, name.end, name.begin};
        call.function = function;
        call.operands.push_back(parseBinary(0));
        parseFurtherArguments(&call);
        call.end = takeSign(')', usage(*function)).end;
        leave();
        return add(std::move(call));
    }

    void parseFurtherArguments(ExpressionNode* call) {
        switch (call->function->arguments) {
        case ExpressionFunction::RESULT:
            break;
        case ExpressionFunction::RESULTS:
            while (isSign(',')) {
                take();
                call->operands.push_back(parseBinary(0));
            }
            break;
        case ExpressionFunction::RESULT_AND_NUMBER:
            takeSign(',', usage(*call->function));
            call->operands.push_back(parseBinary(0));
            break;
        case ExpressionFunction::RESULT_AND_INDEX:
            takeSign(',', usage(*call->function));
            call->number = takeIndex();
            break;
        case ExpressionFunction::RESULT_AND_FLAG:
            if (isSign(',')) {
                take();
                call->number = takeFlag();
            }
            break;
        }
    }

    static std::string usage(const ExpressionFunction& function) {
        return " as in " + function.signature();
    }

    double takeIndex() {
        if (m_token.kind != ExpressionToken::NUMBER || m_token.number != std::floor(m_token.number)) {
            expected("a whole number");
        }
        return take().number;
    }

    double takeFlag() {
        if (m_token.kind != ExpressionToken::WORD || (m_token.name != "true" && m_token.name != "false")) {
            expected("true or false");
        }
        return take().name == "true" ? 1 : 0;
    }

    bool isSign(char sign) const {
        return m_token.kind == ExpressionToken::SIGN && m_token.sign == sign;
    }

    ExpressionToken take() {
        ExpressionToken next = nextToken(m_expression.text, m_token.end);
        return std::exchange(m_token, std::move(next));
    }

    /// @param why goes on behind the sign in the message
    ExpressionToken takeSign(char sign, const std::string& why) {
        if (!isSign(sign)) {
            expected(std::string("\"") + sign + '"' + why);
        }
        return take();
    }

    void enter() {
        if (++m_depth > DEEPEST_NESTING) {
            refuse("parentheses are nested more than " + std::to_string(DEEPEST_NESTING) + " deep");
        }
    }

    void leave() {
        --m_depth;
    }

    std::size_t add(ExpressionNode node) {
        m_expression.nodes.push_back(std::move(node));
        return m_expression.nodes.size() - 1;
    }

    ExpressionNode& node(std::size_t position) {
        return m_expression.nodes[position];
    }

    std::size_t column(std::size_t at) const {
        return columnCount(m_expression.text.substr(0, at)) + 1;
    }

    [[noreturn]] void refuse(const std::string& message) const {
        throw ExpressionError(m_expression.text, m_token.begin, message);
    }

    [[noreturn]] void expected(const std::string& what) const {
        const std::string found = m_expression.text.substr(m_token.begin, m_token.end - m_token.begin);
        refuse("expected " + what + ", found " + (found.empty() ? "the end" : '"' + shortened(found, 40) + '"'));
    }

    Expression m_expression;
    ExpressionToken m_token; ///< The next one.
    std::size_t m_depth = 0;
};

} // namespace

std::string Expression::textOf(const ExpressionNode& node) const {
    return text.substr(node.begin, node.end - node.begin);
}

Expression parseExpression(const std::string& text) {
    return Parser(text).parse();
}

} // namespace orvapp
