#include <check/Walk.hpp>
#include <check/print.hpp>
#include <check/run.hpp>

namespace check {

bool run(const Options& options, std::ostream& out, std::ostream& complaints) {
    Findings findings;
    Walk walk(options, findings, out);
    std::string why;
    if (!walk.open(why)) {
        complaints << "carrier-check: " << why << std::endl;
        return false;
    }
    walk.run();
    if (options.json)
        print_json(out, findings);
    else
        print_text(out, findings);
    return findings.all_well();
}

}  // namespace check
