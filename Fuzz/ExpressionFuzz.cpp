// Any text as an expression: understood, put together on a model with a result of each kind, and computed. What the
// expression asks for may be refused, but no operator may be given what it does not take: it would assert.

#include "Fuzz/Fuzzing.h"
#include "OrvApp/OrvApp.h"
#include "Tests/Support/MemoryModels.h"
#include "Tests/Tools/ExpressionPrinter.h"
#include "Tools/Expression.h"
#include "Tools/ExpressionError.h"
#include "Tools/ExpressionResult.h"

#include <cstddef>
#include <cstdint>

using namespace orv;
using orvfuzz::expect;

namespace {

constexpr std::size_t MOST_NODES = 500; // more of them show nothing new, and computing takes long

const orvtest::MemoryModel& currentModel() {
    static const orvtest::MemoryModel memory;
    static const PtrRef<ug::UnstructGridModel> model = [] {
        PtrRef<ug::UnstructGridModel> made(new ug::UnstructGridModel);
        made->setDataSource(memory.source.get());
        made->modelSpec().setStateId(2);
        app::Models::instance()->add(made.get());
        return made;
    }();
    return memory;
}

void checkNodes(const orvapp::Expression& expression) {
    for (std::size_t i = 0; i < expression.nodes.size(); ++i) {
        const orvapp::ExpressionNode& node = expression.nodes[i];
        expect(node.begin < node.end && node.end <= expression.text.size());
        expect(node.begin <= node.at && node.at < node.end);
        for (const std::size_t operand : node.operands) {
            expect(operand < i);
        }
    }
}

/// What is printed is understood as the same.
void checkPrinted(const orvapp::Expression& expression) {
    const orvapp::Expression again = orvapp::parseExpression(orvtest::printed(expression));
    expect(again.nodes.size() == expression.nodes.size());
    for (std::size_t i = 0; i < again.nodes.size(); ++i) {
        expect(orvtest::identity(again.nodes[i]) == orvtest::identity(expression.nodes[i]));
    }
}

void compute(const orvapp::Expression& expression) {
    const orvtest::MemoryModel& model = currentModel();
    const orvapp::ExpressionResult built = orvapp::buildResult(
        expression, {model.temperature, model.pressure, model.velocity, model.stress, model.displacement});
    expect(built.info.isValid());
    if (!built.info.isCustom()) {
        return;
    }
    app::Results::instance()->add(built.info, "fuzz");
    ug::DataStateSpec spec;
    spec.setResultIds({built.info});
    ug::Error error;
    expect(model.source->loadDataState(2, spec, &error));
    app::Results::instance()->remove(built.info);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        const orvapp::Expression expression =
            orvapp::parseExpression(std::string(reinterpret_cast<const char*>(data), size));
        checkNodes(expression);
        if (expression.nodes.size() <= MOST_NODES) {
            checkPrinted(expression);
            compute(expression);
        }
    } catch (const orvapp::ExpressionError& error) {
        expect(size == 0 || error.excerpt().ends_with("^\n"));
    }
    return 0;
}
