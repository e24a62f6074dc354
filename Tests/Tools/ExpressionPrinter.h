#pragma once

#include "Tools/Expression.h"

#include <string>

namespace orvtest {

/// Writes an expression with no more parentheses than it needs: understood again, it gives the same nodes.
std::string printed(const orvapp::Expression& expression);

/// What a node is, without where it stood.
std::string identity(const orvapp::ExpressionNode& node);

} // namespace orvtest
