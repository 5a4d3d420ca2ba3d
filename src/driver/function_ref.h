#pragma once

#include <type_traits>
#include <utility>

namespace koru {

template<class Signature> class FunctionRef;

// Two words that call a callable of the caller's. It must not outlive the statement it is made in.
template<class Result, class... Arguments> class FunctionRef<Result(Arguments...)> {
public:
    template<class Callable>
    requires(!std::is_same_v<std::remove_cvref_t<Callable>, FunctionRef>) FunctionRef(Callable&& callable)
        : object_(const_cast<void*>(static_cast<const void*>(&callable)))
        , call_([](void* object, Arguments... arguments) -> Result {
            return (*static_cast<std::remove_reference_t<Callable>*>(object))(std::forward<Arguments>(arguments)...);
        })
    {
    }
    Result operator()(Arguments... arguments) const { return call_(object_, std::forward<Arguments>(arguments)...); }

private:
    void* object_;
    Result (*call_)(void*, Arguments...);
};

} // namespace koru
