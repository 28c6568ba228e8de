#pragma once

#include <check/Findings.hpp>
#include <check/Options.hpp>
#include <check/Originals.hpp>
#include <check/Rebuilder.hpp>
#include <check/find_carriers.hpp>
#include <memory>
#include <ostream>
#include <span>
#include <string>

namespace check {

/// One walk over all blocks of all carriers, side by side; no more than a block of each is held.
class Walk {
public:
    /// What is found goes to `findings`, the lines of `--verbose` to `out`; all must outlive this.
    Walk(const Options& options, Findings& findings, std::ostream& out)
        : options_(options), findings_(findings), out_(out) {}

    /// False, with one sentence in `why`, if there is something with which no walk can begin: an
    /// original that cannot be read, or a place to which nothing can be rebuilt.
    [[nodiscard]] bool open(std::string& why);

    /// To the end of the longest carrier.
    void run();

private:
    bool open_originals_(std::string& why);
    bool open_rebuilder_(std::string& why);
    bool has_originals_of_(const Lane& lane);
    void check_sample_rates_();
    bool next_block_();
    void check_(Lane& lane);
    void tell_(Lane& lane, const std::string& what);
    bool decode_(vela::carrier::Block& block, std::string& why, Lane& lane);
    void explain_(std::string& why, Lane& lane);
    void use_(Lane& lane, const vela::carrier::Block& block);
    void rebuild_();
    void finish_();
    void finish_(Lane& lane, std::size_t nr_blocks);
    [[nodiscard]] std::size_t nr_blocks_expected_() const;

    const Options& options_;
    Findings& findings_;
    std::ostream& out_;
    Carriers carriers_;
    Originals originals_;
    std::unique_ptr<Rebuilder> rebuilder_;
    std::size_t frame_ = 0;
};

}  // namespace check
