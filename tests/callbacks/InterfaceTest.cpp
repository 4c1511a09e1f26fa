// The callback interface by itself, and the exceptions that cross the kernel.

#include <gtest/gtest.h>
#include <type_traits>

#include "callbacks/UIDialog.h"
#include "callbacks/UIExceptionKernel.h"
#include "callbacks/UIExceptionQZC.h"

namespace {

// A handler for one of them, or for the standard library's, must not take the other.
static_assert(!std::is_same_v<UIExceptionKernel, UIExceptionQZC>);
static_assert(!std::is_convertible_v<UIExceptionKernel*, UIExceptionQZC*>);
static_assert(!std::is_convertible_v<UIExceptionQZC*, UIExceptionKernel*>);

// No members, no table, no base: an aggregate is initialised from its bases and members, and here
// there is nothing to initialise.
template <class Type>
constexpr bool kHasNothing = std::is_empty_v<Type>&& std::is_aggregate_v<Type> &&
                             !std::is_polymorphic_v<Type> && std::is_trivial_v<Type>;
static_assert(kHasNothing<UIExceptionKernel>);
static_assert(kHasNothing<UIExceptionQZC>);

static_assert(!std::has_virtual_destructor_v<UIDialog>);
static_assert(sizeof(UIDialog) == sizeof(void*));

TEST(UIDialog, IsNotActive) {
  UIDialog dialog;
  UIDialog& called = dialog;
  EXPECT_FALSE(called.IsActive());
}

TEST(UIDialog, EveryOperationIsSilent) {
  UIDialog dialog;
  UIDialog& called = dialog;
  for (const char* text : {"Sweeping", "", static_cast<const char*>(nullptr)}) {
    EXPECT_NO_THROW(called.CreateWait(text));
    EXPECT_NO_THROW(called.UpdateWait(text));
    EXPECT_NO_THROW(called.EndWait());
    EXPECT_NO_THROW(called.CreateProgress(text, 10));
    EXPECT_NO_THROW(called.ResetWait(text, -1));
    EXPECT_NO_THROW(called.UpdateProgress(text));
    EXPECT_NO_THROW(called.SetProgress(10));
    EXPECT_NO_THROW(called.EndProgress());
    EXPECT_NO_THROW(called.ErrorMessage(text, false));
    EXPECT_NO_THROW(called.ErrorMessage(text, true)) << "fatal or not";
  }
}

}  // namespace
