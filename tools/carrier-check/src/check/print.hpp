#pragma once

#include <check/Findings.hpp>
#include <ostream>

namespace check {

/// For people: a line per carrier, the instructions, the errors per channel in the form of the
/// encoder's own report, and every problem in a sentence.
void print_text(std::ostream& out, const Findings& findings);

/// The same as one JSON object.
void print_json(std::ostream& out, const Findings& findings);

/// One line for one block.
void print_block(std::ostream& out, const CarrierReport& carrier, std::size_t frame,
                 const vela::carrier::Block& block);

}  // namespace check
