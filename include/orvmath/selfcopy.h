// The copying half of the Self.../copying pairs of the value classes.
//
// A class writes each edit once, as the in-place SelfName(...) that changes
// the object and returns a reference to it, and derives the copying form
//
//     Class Name(args...) const   // copy *this, apply SelfName(args...) to the copy, return it
//
// with ORVMATH_COPYING_FORM(Class, Name) in its body. The derived member
// takes part in overload resolution only for argument lists that SelfName
// accepts, so other overloads of Name (a Mirror that reflects a point, say)
// live beside it undisturbed.
#pragma once

#include <utility>

// Self is Class made dependent, so that nothing about the class is needed
// before it is complete (clang checks a non-dependent return type at once).
#define ORVMATH_COPYING_FORM(Class, Name)                                                   \
    template <class... Args, class Self = Class,                                            \
              class = decltype(std::declval<Self&>().Self##Name(std::declval<Args>()...))>  \
    Self Name(Args&&... args) const {                                                       \
        Self copy(*this);                                                                   \
        copy.Self##Name(std::forward<Args>(args)...);                                       \
        return copy;                                                                        \
    }
