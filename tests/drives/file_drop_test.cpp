// Files dropped on a drive card, copied to the root of its drive.
#include <gtest/gtest.h>

#include "shell/form1_scenario.h"

namespace quillet::testing {
namespace {

using Paths = std::vector<std::string>;
std::vector<std::uint8_t> Bytes(std::string_view text) { return {text.begin(), text.end()}; }
constexpr const char* kAsk = "already exists do you want overwrite?";

class FileDrop : public Form1Scenario {
 protected:
  FileDrop() {  // cards: 1 C:, 2 E:, 3 G: a disc
    fake.drives.drives.clear();
    fake.drives.drives['C'] = FakeDrives::Sized(100ull << 30, 40ull << 30);
    fake.drives.drives['E'] = FakeDrives::Sized(8ull << 30, 4ull << 30);
    fake.drives.drives['G'] = FakeDrives::Sized(700ull << 20, 0, kDriveCdRom);
    for (const char* f : {"C:\\in\\one.txt", "C:\\in\\two.txt", "C:\\in\\three.txt", "C:\\in\\notes"})
      fake.files.files[f] = Bytes(f);
    fake.files.files["C:\\in\\pics\\a.jpg"] = Bytes("new a");
    fake.files.files["C:\\in\\pics\\sub\\b.jpg"] = Bytes("new b");
    fake.files.folders = {{"C:\\in\\pics", 16}, {"E:\\pics", 16}, {"E:\\notes", 16}};
    for (const char* f : {"E:\\two.txt", "E:\\pics\\a.jpg", "E:\\pics\\old.jpg", "E:\\notes\\keep.txt"})
      fake.files.files[f] = Bytes(std::string("old ") + f);
    Start();
  }
  bool DropOn(int card, const Paths& paths) {
    const Visual& icon = form->DRIVEICON(card);
    return form->DispatchDrop(paths, icon.Left() + 30, icon.Top() + 30);
  }
  const Form* Splash() const {
    for (const Form* f : ui.OpenForms())
      if (f->Name() == "Form7") return f;
    return nullptr;
  }
  std::string Content(const std::string& path) {
    const auto it = fake.files.files.find(path);
    return it == fake.files.files.end() ? "<none>" : std::string(it->second.begin(), it->second.end());
  }
};

TEST_F(FileDrop, ThreeFilesWithTheSecondThereAnsweredNoCopyTheOthersAndTheTimerClosesTheSplash) {
  fake.dialogs.answers = {kAnswerNo};
  std::vector<bool> splash_up;  // at each copy
  fake.files.on_copy = [&](const std::string&, const std::string&) {
    splash_up.push_back(Splash() != nullptr && Splash()->Visible());
  };
  const int events = ui.do_events_calls;
  ASSERT_EQ(form->HitTest(form->DRIVEICON(2).Left() + 30, form->DRIVEICON(2).Top() + 30), &form->DRIVEICON(2));
  EXPECT_TRUE(DropOn(2, {"C:\\in\\one.txt", "C:\\in\\two.txt", "C:\\in\\three.txt"}));
  EXPECT_EQ(Content("E:\\one.txt"), "C:\\in\\one.txt");
  EXPECT_EQ(Content("E:\\two.txt"), "old E:\\two.txt");
  EXPECT_EQ(Content("E:\\three.txt"), "C:\\in\\three.txt");
  ASSERT_EQ(fake.dialogs.shown.size(), 1u);
  EXPECT_EQ(fake.dialogs.shown[0].text, "E:\\two.txt\r\n\r\n");
  EXPECT_EQ(fake.dialogs.shown[0].title, kAsk);
  EXPECT_EQ(fake.dialogs.shown[0].style, kYesNo);
  EXPECT_EQ(splash_up, (std::vector<bool>{true, true}));
  EXPECT_EQ(ui.do_events_calls, events);  // nothing else ran inside the drop
  // The splash hangs below right of the pointer and follows it.
  ui.pointer = {6000, 4500};
  ui.timers.Advance(990);
  ASSERT_NE(Splash(), nullptr);
  EXPECT_EQ(Splash()->Left(), 6200);
  EXPECT_EQ(Splash()->Top(), 4700);
  ui.timers.Advance(10);
  EXPECT_EQ(Splash(), nullptr);
  EXPECT_FALSE(form->Timer5.Enabled());
}

TEST_F(FileDrop, AFolderOverAFolderReplacesItWholeAndKillFolderTellsWhetherOneWent) {
  fake.dialogs.answers = {kAnswerYes};
  DropOn(2, {"C:\\in\\pics"});
  EXPECT_EQ(Content("E:\\pics\\a.jpg") + Content("E:\\pics\\sub\\b.jpg"), "new anew b");
  EXPECT_EQ(Content("E:\\pics\\old.jpg"), "<none>");
  EXPECT_TRUE(form->KillFolder("E:\\notes\\"));
  EXPECT_EQ(Content("E:\\notes\\keep.txt"), "<none>");
  EXPECT_FALSE(form->KillFolder("E:\\notes"));
}

TEST_F(FileDrop, AFailingCopyEndsTheDropWithAMessageTheSplashClosedAndTheMarkerHidden) {
  struct Case {
    const char* name;
    bool full;
    Paths drop;
    std::string failed;  // the message box's text
  };
  const Case cases[] = {
      {"a file over a folder of its name, answered Yes", false, {"C:\\in\\notes", "C:\\in\\one.txt"},
       "Cannot copy C:\\in\\notes to E:\\notes."},
      {"a full drive", true, {"C:\\in\\one.txt", "C:\\in\\three.txt"}, "Cannot copy C:\\in\\one.txt to E:\\one.txt."},
      {"a folder from inside the folder it would replace", false, {"e:\\Pics\\pics", "C:\\in\\one.txt"},
       "Cannot copy e:\\Pics\\pics to E:\\pics: it lies inside it."},
  };
  fake.files.folders["E:\\pics\\pics"] = 16;
  fake.files.files["E:\\pics\\pics\\c.jpg"] = Bytes("inner");
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    fake.files.copies_fail = c.full;
    fake.dialogs.shown.clear();
    fake.dialogs.answers = {kAnswerYes};
    form->DispatchDragOver(form->ImageD(2).Left() + 2330, form->ImageD(2).Top() + 30);
    ASSERT_TRUE(form->Image19.Visible());
    DropOn(2, c.drop);
    EXPECT_EQ(Content("E:\\notes\\keep.txt"), "old E:\\notes\\keep.txt");
    EXPECT_EQ(Content("E:\\pics\\pics\\c.jpg"), "inner");
    EXPECT_EQ(Content("E:\\one.txt"), "<none>");
    EXPECT_EQ(Content("E:\\three.txt"), "<none>");
    ASSERT_FALSE(fake.dialogs.shown.empty());
    EXPECT_EQ(fake.dialogs.shown.back().text, c.failed);
    EXPECT_EQ(fake.dialogs.shown.back().title, "Quillet");
    EXPECT_FALSE(form->Image19.Visible());
    EXPECT_EQ(Splash(), nullptr);
  }
}

TEST_F(FileDrop, NothingHappensOnItsOwnRootOnADiscOrOnACardText) {
  fake.files.files["E:\\mine.txt"] = Bytes("mine");
  struct Case {
    const char* name;
    int card;
    Paths drop;
  };
  const Case cases[] = {
      {"own root", 2, {"E:\\mine.txt", "C:\\in\\one.txt"}},
      {"own root, another case", 2, {"e:\\MINE.TXT", "C:\\in\\one.txt"}},
      {"a disc", 3, {"C:\\in\\one.txt"}},
  };
  for (const Case& c : cases) {
    SCOPED_TRACE(c.name);
    form->DispatchDragOver(form->ImageD(2).Left() + 2330, form->ImageD(2).Top() + 30);
    DropOn(c.card, c.drop);
    EXPECT_EQ(c.card == 3, form->Image19.Visible());  // the item lies there: the marker goes
  }
  const Visual& text = form->CaptionL(2);
  EXPECT_FALSE(form->DispatchDrop({"C:\\in\\one.txt"}, text.Left() + 900, text.Top() + 60));
  EXPECT_EQ(Content("E:\\mine.txt"), "mine");
  EXPECT_EQ(Content("E:\\one.txt"), "<none>");
  EXPECT_TRUE(fake.dialogs.shown.empty());
  EXPECT_EQ(Splash(), nullptr);
}

TEST_F(FileDrop, DraggingOverACardPutsTheMarkerOnItButNotOnADisc) {
  const Image& marker = form->Image19;
  for (const int card : {2, 1}) {
    EXPECT_TRUE(form->DispatchDragOver(form->ImageD(card).Left() + 2330, form->ImageD(card).Top() + 30));
    EXPECT_EQ(marker.Top(), form->ImageD(card).Top());
    EXPECT_EQ(marker.Left(), form->ImageD(card).Left() + marker.Width() / 4);
    EXPECT_EQ(form->HitTest(marker.Left() + 10, marker.Top() + 10), &marker);
    EXPECT_TRUE(form->Timer3.Enabled());
  }
  MoveOver(marker, 10, 10);
  EXPECT_FALSE(marker.Visible());
  form->DispatchDragOver(form->ImageD(3).Left() + 2330, form->ImageD(3).Top() + 30);
  EXPECT_FALSE(marker.Visible());
}

}  // namespace
}  // namespace quillet::testing
