// The printing path of the trade confirmation: an HTML document with its colours.
#pragma once

#include <string>

#include "platform/types.h"

namespace quillon {

class HtmlPrinter {
 public:
  virtual ~HtmlPrinter() = default;
  // Prints the document on the given background and text colours (0x00BBGGRR).
  virtual void print(const std::string& html, Long backColor, Long foreColor) = 0;
};

}  // namespace quillon
