#include <vela/gvm/create.hpp>
#include <vela/gvm/fast/Learner.hpp>
#include <vela/gvm/impl/Learner.hpp>
#include <vela/gvm/ref/Learner.hpp>
#include <vela/segment/Iterator.hpp>

namespace vela::gvm {

template <typename T, typename Iterator>
bool create(std::shared_ptr<api::Learner<T, Iterator>>& learner, const std::string& name) {
    learner.reset();
    if (name == "ref")
        learner = std::make_shared<impl::Learner<T, Iterator, ref::Learner<Iterator>>>();
    else if (name == "fast")
        learner = std::make_shared<impl::Learner<T, Iterator, fast::Learner<T, Iterator>>>();
    return learner != nullptr;
}

template <std::size_t N>
using Pointer = std::shared_ptr<api::Learner<double, segment::Iterator<N, int>>>;

template bool create(Pointer<1>&, const std::string&);
template bool create(Pointer<2>&, const std::string&);

}  // namespace vela::gvm
