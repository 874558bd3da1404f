#include <gtest/gtest.h>

#include "headless/headless_ui.h"
#include "widgets/DFTrans.h"
#include "widgets/modFade.h"

namespace quillet::testing {
namespace {

FormArgs Named(std::string name) {
  FormArgs args;
  args.name = std::move(name);
  return args;
}

TEST(Fade, StepsDownToNothingLettingEventsRunThenUnloads) {
  const struct {
    int step;
    std::size_t values;
    int second_last;
  } cases[] = {{5, 51, 5}, {100, 3, 55}, {255, 1, 0}, {300, 1, 0}};
  for (const auto& c : cases) {
    HeadlessUi ui;
    Form form(ui, Named("Form9"));
    form.Show();
    const int events_before = ui.do_events_calls;
    FadeOutAndUnload(form, c.step);
    ASSERT_EQ(ui.alphas.size(), c.values) << c.step;
    EXPECT_EQ(ui.alphas.front(), c.values == 1 ? 0 : 255 - c.step) << c.step;
    EXPECT_EQ(ui.alphas.back(), 0) << c.step;
    if (c.values > 1) {
      EXPECT_EQ(ui.alphas[c.values - 2], c.second_last) << c.step;
    }
    EXPECT_EQ(ui.do_events_calls - events_before, static_cast<int>(c.values) - 1) << c.step;
    EXPECT_FALSE(form.Loaded()) << c.step;
  }
}

TEST(Fade, AnAlphaReplacesTheColourKeyAndTheKeyIsTheLiteral) {
  HeadlessUi ui;
  Form form(ui, Named("Form9"));
  form.SetBackColor(Rgb(1, 2, 3));
  DFTrans trans(form);
  EXPECT_EQ(trans.TransColor(), Rgb(1, 2, 3));
  trans.SetTransColor(Rgb(9, 9, 9));
  trans.Resize();
  EXPECT_EQ(form.Layering().key, kKeyColour);
  EXPECT_EQ(trans.TransColor(), Rgb(1, 2, 3));
  SetWindowAlpha(form, 128);
  EXPECT_EQ(form.Layering().key, std::nullopt);
  EXPECT_EQ(form.Layering().alpha, 128);
}

}  // namespace
}  // namespace quillet::testing
