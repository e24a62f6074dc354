#include "Tools/Expression.h"

#include "Tests/Tools/ExpressionPrinter.h"
#include "Tools/ExpressionError.h"
#include "Tools/ExpressionFunctions.h"

#include <gmock/gmock.h>

#include <random>

using namespace orvapp;
using orvtest::identity;
using orvtest::printed;
using testing::HasSubstr;

namespace {

/// Every operator with parentheses around what it takes: tells what binds first.
std::string grouped(const std::string& text) {
    const Expression expression = parseExpression(text);
    std::vector<std::string> texts;
    for (const ExpressionNode& node : expression.nodes) {
        switch (node.kind) {
        case ExpressionNode::NUMBER:
            texts.push_back(expression.textOf(node));
            break;
        case ExpressionNode::NAME:
            texts.push_back(node.name);
            break;
        case ExpressionNode::CALL:
        case ExpressionNode::INDEX:
            texts.push_back("f(" + texts[node.operands[0]] + ")");
            break;
        case ExpressionNode::NEGATE:
            texts.push_back("(-" + texts[node.operands[0]] + ")");
            break;
        default:
            texts.push_back("(" + texts[node.operands[0]] + expression.text[node.at] + texts[node.operands[1]] + ")");
        }
    }
    return texts.back();
}

struct Grouping {
    std::string text;
    std::string grouped;
};

class GroupingTest : public testing::TestWithParam<Grouping> {};

struct Refusal {
    std::string text;
    int column;
    std::string message;
};

class RefusalTest : public testing::TestWithParam<Refusal> {};

std::string refusalOf(const std::string& text) {
    try {
        parseExpression(text);
    } catch (const ExpressionError& error) {
        return error.what();
    }
    return "";
}

const std::string ALL_FUNCTIONS =
    R"( (functions: "vonMises", "principals", "l2Norm", "l1Norm", "extractComponent", "min", "max", "average", )"
    R"("minValue", "maxValue", "averageValue", "toElementsArithmetic", "toNodesArithmetic", "abs", "sqrt", "exp", )"
    R"("log", "log10", "sin", "cos", "tan", "asin", "acos", "atan", "pow"))";

/// Expressions at random, put together without the parser. The same numbers on every machine.
class RandomExpression {
public:
    explicit RandomExpression(unsigned seed) : m_random(seed) {}

    Expression make() {
        m_expression = Expression();
        add(6);
        return m_expression;
    }

private:
    std::size_t below(std::size_t count) {
        return m_random() % count;
    }

    std::size_t add(std::size_t depth) {
        ExpressionNode node{kind(depth), 0, 0, 0};
        switch (node.kind) {
        case ExpressionNode::NUMBER:
            node.number = number();
            break;
        case ExpressionNode::NAME:
            setName(&node);
            break;
        case ExpressionNode::CALL:
            setCall(&node, depth - 1);
            break;
        case ExpressionNode::INDEX:
            node.number = double(below(7));
            node.operands = {add(depth - 1)};
            break;
        case ExpressionNode::NEGATE:
            node.operands = {add(depth - 1)};
            break;
        default:
            node.operands.push_back(add(depth - 1));
            node.operands.push_back(add(depth - 1));
        }
        m_expression.nodes.push_back(node);
        return m_expression.nodes.size() - 1;
    }

    ExpressionNode::Kind kind(std::size_t depth) {
        return depth == 0 ? ExpressionNode::Kind(below(2)) : ExpressionNode::Kind(below(10));
    }

    double number() {
        const double numbers[] = {0, 1, 2.5, 1e-300, 6.02214076e23, 0.1, 1.7976931348623157e308};
        return below(2) == 0 ? numbers[below(7)] : std::ldexp(double(m_random()), int(below(200)) - 100);
    }

    void setName(ExpressionNode* node) {
        const char* names[] = {"DISP",
                               "min",
                               "true",
                               "_1.b",
                               "St\xC3\xA4"
                               "bchen",
                               "1st Principal S",
                               "a\"b\"'c",
                               "STR(%)",
                               "a:b",
                               " ",
                               "-",
                               "\n"};
        node->name = names[below(12)];
        node->type = orv::ug::ResultType(below(5));
        const orv::ug::ResultMapping mappings[] = {orv::ug::UNKNOWN_MAPPING, orv::ug::PER_NODE, orv::ug::PER_ELEMENT,
                                                   orv::ug::PER_ELEMENT_NODE, orv::ug::PER_ELEMENT_SURFACE};
        node->mapping = mappings[below(5)];
    }

    void setCall(ExpressionNode* node, std::size_t depth) {
        node->function = &expressionFunctions()[below(expressionFunctions().size())];
        node->operands = {add(depth)};
        switch (node->function->arguments) {
        case ExpressionFunction::RESULT:
            break;
        case ExpressionFunction::RESULT_AND_INDEX:
            node->number = double(below(9));
            break;
        case ExpressionFunction::RESULT_AND_FLAG:
            node->number = double(below(2));
            break;
        case ExpressionFunction::RESULT_AND_NUMBER:
            node->operands.push_back(add(depth));
            break;
        case ExpressionFunction::RESULTS:
            for (std::size_t i = below(3); i > 0; --i) {
                node->operands.push_back(add(depth));
            }
            break;
        }
    }

    std::mt19937 m_random;
    Expression m_expression;
};

std::vector<std::string> identities(const Expression& expression) {
    std::vector<std::string> all;
    for (const ExpressionNode& node : expression.nodes) {
        all.push_back(identity(node));
    }
    return all;
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string all;
    for (std::size_t i = 0; i < times; ++i) {
        all += text;
    }
    return all;
}

} // namespace

TEST_P(GroupingTest, BindsAsTold) {
    EXPECT_EQ(grouped(GetParam().text), GetParam().grouped);
}

INSTANTIATE_TEST_SUITE_P(
    Expression, GroupingTest,
    testing::Values(Grouping{"A+B*C", "(A+(B*C))"}, Grouping{"A*B+C", "((A*B)+C)"}, Grouping{"A-B/C", "(A-(B/C))"},
                    Grouping{"A/B-C", "((A/B)-C)"}, Grouping{"A*B^C", "(A*(B^C))"}, Grouping{"A^B*C", "((A^B)*C)"},
                    Grouping{"A/B^C", "(A/(B^C))"}, Grouping{"A+B^C", "(A+(B^C))"}, Grouping{"A^B-C", "((A^B)-C)"},
                    Grouping{"A-B-C", "((A-B)-C)"}, Grouping{"A+B-C+D", "(((A+B)-C)+D)"},
                    Grouping{"A/B/C", "((A/B)/C)"}, Grouping{"A*B/C*D", "(((A*B)/C)*D)"},
                    Grouping{"A^B^C", "((A^B)^C)"}, Grouping{"A+B*C^D-E", "((A+(B*(C^D)))-E)"},
                    Grouping{"A-(B-C)", "(A-(B-C))"}, Grouping{"(A+B)*C", "((A+B)*C)"},
                    Grouping{"A*(B+C)", "(A*(B+C))"}, Grouping{"((A))", "A"}, Grouping{"-A", "(-A)"},
                    Grouping{"-A*B", "((-A)*B)"}, Grouping{"-A^B", "((-A)^B)"}, Grouping{"A*-B", "(A*(-B))"},
                    Grouping{"A--B", "(A-(-B))"}, Grouping{"---A", "(-(-(-A)))"}, Grouping{"+A", "A"},
                    Grouping{"-+-A", "(-(-A))"}, Grouping{"A++B", "(A+B)"}, Grouping{"-(A+B)", "(-(A+B))"},
                    Grouping{"-abs(A)[3]*2", "((-f(f(A)))*2)"}, Grouping{"abs(A)^abs(B)", "(f(A)^f(B))"},
                    Grouping{" A\t+\nB ", "(A+B)"}, Grouping{"2.5*A", "(2.5*A)"}, Grouping{"A+1e-3", "(A+1e-3)"},
                    Grouping{"1e3-2", "(1e3-2)"}, Grouping{"A-2", "(A-2)"}));

TEST_P(RefusalTest, TellsWhatAndWhere) {
    EXPECT_EQ(refusalOf(GetParam().text),
              "column " + std::to_string(GetParam().column) + " of the expression: " + GetParam().message);
}

INSTANTIATE_TEST_SUITE_P(
    Expression, RefusalTest,
    testing::Values(
        Refusal{"", 1, "it is empty; name a result, as in l2Norm(DISP)"},
        Refusal{"  ", 3, "it is empty; name a result, as in l2Norm(DISP)"},
        Refusal{"A B", 3, R"(expected an operator or the end, found "B")"},
        Refusal{"2A", 2, R"(expected an operator or the end, found "A")"},
        Refusal{"A)", 2, R"x(expected an operator or the end, found ")")x"},
        Refusal{"A,B", 2, R"(expected an operator or the end, found ",")"},
        Refusal{"A 'x y'", 3, R"(expected an operator or the end, found "'x y'")"},
        Refusal{"'A'(B)", 4, R"x(expected an operator or the end, found "(")x"},
        Refusal{"A+", 3, "expected a result, a number or a function, found the end"},
        Refusal{"A+ ", 4, "expected a result, a number or a function, found the end"},
        Refusal{"A**B", 3, R"(expected a result, a number or a function, found "*")"},
        Refusal{"()", 2, R"x(expected a result, a number or a function, found ")")x"},
        Refusal{"-", 2, "expected a result, a number or a function, found the end"},
        Refusal{"[3]", 1, R"(expected a result, a number or a function, found "[")"},
        Refusal{"A+(B*(C-D)", 11, R"x(expected ")" for the "(" in column 3, found the end)x"},
        Refusal{"(A B)", 4, R"x(expected ")" for the "(" in column 1, found "B")x"},
        Refusal{"A[x]", 3, R"(expected a whole number, found "x")"},
        Refusal{"A[1.5]", 3, R"(expected a whole number, found "1.5")"},
        Refusal{"A[-1]", 3, R"(expected a whole number, found "-")"},
        Refusal{"A[]", 3, R"(expected a whole number, found "]")"}, Refusal{"A[1", 4, R"(expected "]", found the end)"},
        Refusal{"abs()", 5, R"x(expected a result, a number or a function, found ")")x"},
        Refusal{"abs(A,B)", 6, R"x(expected ")" as in abs(A), found ",")x"},
        Refusal{"vonMises(A", 11, R"x(expected ")" as in vonMises(TENSOR), found the end)x"},
        Refusal{"extractComponent(A)", 19, R"x(expected "," as in extractComponent(A, INDEX), found ")")x"},
        Refusal{"extractComponent(A,B)", 20, R"x(expected a whole number, found "B")x"},
        Refusal{"extractComponent(A,0,1)", 21, R"x(expected ")" as in extractComponent(A, INDEX), found ",")x"},
        Refusal{"pow(A)", 6, R"x(expected "," as in pow(A, NUMBER), found ")")x"},
        Refusal{"pow(A,2,3)", 8, R"x(expected ")" as in pow(A, NUMBER), found ",")x"},
        Refusal{"min(A,)", 7, R"x(expected a result, a number or a function, found ")")x"},
        Refusal{"min(A B)", 7, R"x(expected ")" as in min(A, B, ...), found "B")x"},
        Refusal{"minValue(A, 1)", 13, R"x(expected true or false, found "1")x"},
        Refusal{"minValue(A, 'true')", 13, R"x(expected true or false, found "'true'")x"},
        Refusal{"minValue(A, true, B)", 17, R"x(expected ")" as in minValue(A, PER_PART), found ",")x"},
        Refusal{"A + vonMise(B)", 5, R"x(there is no function "vonMise"; did you mean "vonMises"?)x" + ALL_FUNCTIONS},
        Refusal{"foobar (B)", 1, R"x(there is no function "foobar")x" + ALL_FUNCTIONS},
        Refusal{"A:tensr", 3,
                R"(expected one of scalar, vector, displacement, tensor and one of node, element, element_node, )"
                R"(element_surface, found "tensr")"},
        Refusal{"A:scalar:vector", 10,
                R"(expected one of scalar, vector, displacement, tensor and one of node, element, element_node, )"
                R"(element_surface, found "vector")"},
        Refusal{"A:node:element", 8,
                R"(expected one of scalar, vector, displacement, tensor and one of node, element, element_node, )"
                R"(element_surface, found "element")"},
        Refusal{"A:'node'", 3,
                R"(expected one of scalar, vector, displacement, tensor and one of node, element, element_node, )"
                R"(element_surface, found "'node'")"},
        Refusal{"A:", 3,
                R"(expected one of scalar, vector, displacement, tensor and one of node, element, element_node, )"
                R"(element_surface, found the end)"},
        Refusal{"(A):node", 4, R"(expected an operator or the end, found ":")"},
        Refusal{"A+B%C", 4, R"("%" means nothing here; a name with such characters goes in quotes)"},
        Refusal{"\"A", 1, "the name that begins here lacks its closing quote"},
        Refusal{"A + 'B\"", 5, "the name that begins here lacks its closing quote"},
        Refusal{"A+''", 3, "there is no name between the quotes"}, Refusal{"1.2.3", 1, R"("1.2.3" is not a number)"},
        Refusal{"A*.", 3, R"("." is not a number)"}, Refusal{"A+1e999", 3, R"("1e999" is beyond the range of numbers)"},
        Refusal{"A+1e-999", 3, R"("1e-999" is beyond the range of numbers)"},
        // A column is a character, however many bytes it has: the question mark is the 18th.
        Refusal{"\"St\xC3\xA4"
                "bchen \xE2\x82\xAC\" + \xF0\x9F\x94\xA9 ? 1",
                18, R"("?" means nothing here; a name with such characters goes in quotes)"}));

TEST(Expression, KeepsWhatANodeIs) {
    const Expression expression = parseExpression("extractComponent('a b':tensor:element_node, 4) - principals(S)[5]");
    ASSERT_EQ(expression.nodes.size(), 6u);
    const ExpressionNode& name = expression.nodes[0];
    EXPECT_EQ(name.kind, ExpressionNode::NAME);
    EXPECT_EQ(name.name, "a b");
    EXPECT_EQ(name.type, orv::ug::SYMMETRIC_TENSOR);
    EXPECT_EQ(name.mapping, orv::ug::PER_ELEMENT_NODE);
    const ExpressionNode& call = expression.nodes[1];
    EXPECT_STREQ(call.function->name, "extractComponent");
    EXPECT_EQ(call.number, 4);
    const ExpressionNode& index = expression.nodes[4];
    EXPECT_EQ(index.kind, ExpressionNode::INDEX);
    EXPECT_EQ(index.number, 5);
    EXPECT_EQ(expression.nodes[5].kind, ExpressionNode::SUBTRACT);
    EXPECT_THAT(expression.nodes[5].operands, testing::ElementsAre(1, 4));
}

TEST(Expression, AKindMayComeBeforeOrBehindThePlace) {
    const ExpressionNode name = parseExpression("A:node:vector").nodes[0];
    EXPECT_EQ(name.type, orv::ug::VECTOR);
    EXPECT_EQ(name.mapping, orv::ug::PER_NODE);
    EXPECT_EQ(parseExpression("A").nodes[0].type, orv::ug::NO_RESULT_TYPE);
    EXPECT_EQ(parseExpression("A").nodes[0].mapping, orv::ug::UNKNOWN_MAPPING);
}

TEST(Expression, TheFlagMayBeLeftOut) {
    EXPECT_EQ(parseExpression("minValue(A)").nodes.back().number, 0);
    EXPECT_EQ(parseExpression("minValue(A, false)").nodes.back().number, 0);
    EXPECT_EQ(parseExpression("minValue(A, true)").nodes.back().number, 1);
}

TEST(Expression, PointsAtOperatorsAndNames) {
    const Expression expression = parseExpression("(A + B) * abs(C)[0]");
    auto places = [&](std::size_t i) {
        const ExpressionNode& node = expression.nodes[i];
        return std::vector<std::size_t>{node.begin, node.at, node.end};
    };
    EXPECT_THAT(places(2), testing::ElementsAre(0, 3, 7));    // A + B, with its parentheses
    EXPECT_THAT(places(4), testing::ElementsAre(10, 10, 16)); // abs
    EXPECT_THAT(places(5), testing::ElementsAre(10, 16, 19)); // [0]
    EXPECT_THAT(places(6), testing::ElementsAre(0, 8, 19));   // *
}

TEST(Expression, NestingHasALimit) {
    const std::string open(DEEPEST_NESTING, '(');
    const std::string close(DEEPEST_NESTING, ')');
    EXPECT_EQ(refusalOf(open + 'A' + close), "");
    EXPECT_EQ(refusalOf('(' + open + 'A' + close + ')'),
              "column 201 of the expression: parentheses are nested more than 200 deep");
    EXPECT_EQ(refusalOf(repeated("abs(", 200) + 'A' + close), "");
    EXPECT_EQ(refusalOf(repeated("abs(", 201) + 'A' + close + ')'),
              "column 804 of the expression: parentheses are nested more than 200 deep");
    // Parentheses side by side are not nested.
    EXPECT_EQ(refusalOf(repeated("(A)+(abs(B))*", 1000) + 'A'), "");
}

TEST(Expression, HostileNestingIsRefused) {
    for (const char* part : {"(", "abs(", "min(A,", "-(", "A*(", "(A+"}) {
        EXPECT_THAT(refusalOf(repeated(part, 100000)), HasSubstr("parentheses are nested more than 200 deep")) << part;
    }
}

TEST(Expression, LengthAloneIsNoObstacle) {
    EXPECT_EQ(parseExpression('A' + repeated("+A", 99999)).nodes.size(), 199999u);
    EXPECT_EQ(parseExpression(std::string(100000, '-') + 'A').nodes.size(), 100001u);
    EXPECT_EQ(parseExpression('A' + repeated("[0]", 100000)).nodes.size(), 100001u);
    EXPECT_EQ(parseExpression("min(A" + repeated(",A", 99999) + ')').nodes.size(), 100001u);
    EXPECT_EQ(parseExpression('"' + std::string(100000, 'x') + '"').nodes[0].name.size(), 100000u);
}

TEST(Expression, PrintedAndUnderstoodAgainItIsTheSame) {
    for (unsigned seed = 1; seed <= 2000; ++seed) {
        const Expression expression = RandomExpression(seed).make();
        const std::string text = printed(expression);
        const Expression again = parseExpression(text);
        ASSERT_EQ(identities(again), identities(expression)) << seed << ": " << text;
    }
}

TEST(Expression, TheTextOfANodeIsAnExpressionOfItsOwn) {
    for (unsigned seed = 1; seed <= 200; ++seed) {
        Expression whole = parseExpression(printed(RandomExpression(seed).make()));
        while (!whole.nodes.empty()) {
            // Without what comes behind it, the last node is the whole.
            const Expression part = parseExpression(whole.textOf(whole.nodes.back()));
            ASSERT_EQ(printed(part), printed(whole)) << seed;
            whole.nodes.pop_back();
        }
    }
}
