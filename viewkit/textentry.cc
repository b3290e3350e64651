/// @file
/// Taking control characters out of what is about to enter a field.
#include "viewkit/textentry.h"

#include <Xm/TextF.h>

#include <algorithm>
#include <cwchar>
#include <cwctype>

namespace viewkit {
namespace {

void verify(Widget, XtPointer, XtPointer data) noexcept {
  auto& change = *static_cast<XmTextVerifyCallbackStruct*>(data);
  XmTextBlock block = change.text;
  if (!block || !block->ptr || block->length <= 0) return;
  const std::string entering(block->ptr, static_cast<std::size_t>(block->length));
  const std::string kept = withoutControls(entering);
  if (kept == entering) return;
  if (kept.empty()) {
    change.doit = False;
    return;
  }
  std::ranges::copy(kept, block->ptr);
  block->ptr[kept.size()] = '\0';
  block->length = static_cast<int>(kept.size());
}

}  // namespace

std::string withoutControls(std::string_view text) {
  std::string kept;
  std::mbstate_t state{};
  while (!text.empty()) {
    wchar_t character = 0;
    const std::size_t length = std::mbrtowc(&character, text.data(), text.size(), &state);
    const bool means_nothing = length > text.size();  // -1 and -2
    const std::size_t bytes = means_nothing || length == 0 ? 1 : length;
    if (means_nothing) state = {};
    if (means_nothing || std::iswcntrl(static_cast<std::wint_t>(character)) == 0)
      kept += text.substr(0, bytes);
    text.remove_prefix(bytes);
  }
  return kept;
}

void keepControlsOut(Widget field) {
  XtVaSetValues(field, XmNverifyBell, False, nullptr);
  XtAddCallback(field, XmNmodifyVerifyCallback, &verify, nullptr);
}

}  // namespace viewkit
