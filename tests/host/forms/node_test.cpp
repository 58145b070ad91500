#include <QAction>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

#include "host/forms/Base_node.h"
#include "host/forms/Base_node_d.h"
#include "host/forms/form_builder.h"
#include "host/forms/tree_node.h"
#include "tests/host/forms/form_world.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

class Editor : public TFrm_Base_Node_d {
 public:
  explicit Editor(QWidget* owner) : TFrm_Base_Node_d(owner) {
    FormBuilder(*this).fields({{.name = u"t0"_s, .label = u"类别代号"_s, .limit = 4, .upper = true},
                               {.name = u"t1"_s, .label = u"类别名称"_s, .limit = 30}});
    FormCreate();
  }
  void SaveData() override {
    if (failure) throw EDatabaseError(2627, 14, 1, 1, u"编号重复"_s);
    parent = parentCode();
  }
  void showSaved() override { placeNode(text(u"t0"_s), text(u"t1"_s)); }
  bool failure = false;
  QString parent;
};

class Tree : public TFrm_Base_Node {
 public:
  Tree() {
    FormCreate();
    SetBodyParam(bodyparam::make({{bodyparam::keyField, u"CLASS_id"_s},
                                  {bodyparam::parentField, u"oid"_s},
                                  {bodyparam::rootValue, u"Z"_s}}));
    editor = new Editor(this);
    editor->SetBodyParam(bodyparam::make({{bodyparam::keyField, u"CLASS_id"_s},
                                          {bodyparam::parentField, u"oid"_s},
                                          {bodyparam::rootValue, u"Z"_s}}));
    setEditor(editor);
  }
  void GetList() override {
    AdoQry_Main.create({{.name = u"CLASS_ID"_s}, {.name = u"CLASS_NAME"_s}, {.name = u"OID"_s}});
    for (const auto& [code, parent] : data) {
      AdoQry_Main.append();
      AdoQry_Main.setValue(u"CLASS_ID"_s, code);
      AdoQry_Main.setValue(u"CLASS_NAME"_s, u"n"_s + code);
      AdoQry_Main.setValue(u"OID"_s, parent);
      AdoQry_Main.post();
    }
    buildTree();
  }
  std::vector<std::pair<QString, QString>> data{
      {u"01"_s, u"Z"_s}, {u"0101"_s, u"01"_s}, {u"0102"_s, u"01"_s}, {u"02"_s, u"Z"_s}};
  Editor* editor;
};

class Nodes : public FormWorld {
 protected:
  void open() {
    Trecord record;
    record.setModule(104);
    for (const auto right : {Trecord::addRight, Trecord::editRight, Trecord::deleteRight})
      record.setRight(right, true);
    screen->InitForm(record);
    activate(*screen);
    ASSERT_TRUE(QTest::qWaitFor([this] { return screen->AdoQry_Main.isOpen(); }));
  }
  ~Nodes() override { delete screen; }

  // "code" and its children in parentheses.
  static std::string shape(const QTreeWidgetItem* node) {
    std::string text = treenode::isOrphanHead(node) ? "?" : treenode::code(node).toStdString();
    if (node->childCount() == 0) return text;
    text += "(";
    for (int i = 0; i < node->childCount(); ++i) text += (i ? " " : "") + shape(node->child(i));
    return text + ")";
  }
  std::string shape() const {
    std::string text;
    for (int i = 0; i < screen->tree()->topLevelItemCount(); ++i)
      text += (i ? " " : "") + shape(screen->tree()->topLevelItem(i));
    return text;
  }
  void select(const char* code) {
    screen->tree()->setCurrentItem(treenode::find(*screen->tree(), QString::fromLatin1(code)));
  }
  std::string selected() const { return treenode::code(treenode::selected(*screen->tree())).toStdString(); }
  void add(const char* action, const char* code) {
    whileModal([this, action] { screen->action(QString::fromLatin1(action))->trigger(); },
               [this, code] {
                 screen->editor->setText(u"t0"_s, QString::fromLatin1(code));
                 screen->editor->setText(u"t1"_s, u"new"_s);
                 QTest::keyClick(screen->editor->focusWidget(), Qt::Key_F9);
                 if (screen->editor->failure) screen->editor->done(0);
               });
  }

  Tree* screen = new Tree;
};

TEST_F(Nodes, TheTreeFollowsTheParentColumn) {
  open();
  EXPECT_EQ(shape(), "01(0101 0102) 02");
  EXPECT_EQ(treenode::find(*screen->tree(), u"0101"_s)->text(0), u"0101 n0101"_s);
}

TEST_F(Nodes, OrphansAndRingsStandUnderANodeOfTheirOwn) {
  screen->data = {{u"a"_s, u"b"_s}, {u"b"_s, u"a"_s}, {u"01"_s, u"Z"_s}, {u"0901"_s, u"09"_s}};
  open();
  EXPECT_EQ(shape(), "01 ?(0901 a(b))");
}

TEST_F(Nodes, TheOrphansHeadCannotBeWorkedOn) {
  screen->data = {{u"0901"_s, u"09"_s}};
  open();
  screen->tree()->setCurrentItem(screen->tree()->topLevelItem(0));
  EXPECT_EQ(treenode::selected(*screen->tree()), nullptr);
  QCoreApplication::processEvents();
  for (const char* name : {"Act_CopyAdd", "Act_Edit", "Act_Delete"})
    EXPECT_FALSE(screen->action(QString::fromLatin1(name))->isEnabled()) << name;
  EXPECT_TRUE(screen->action(u"Act_Add"_s)->isEnabled());
}

TEST_F(Nodes, AddStandsBesideTheSelectedNode) {
  open();
  select("0101");
  add("Act_Add", "0103");
  EXPECT_EQ(shape(), "01(0101 0102 0103) 02");
  EXPECT_EQ(screen->editor->parent, u"01"_s);
  EXPECT_EQ(selected(), "0103");
}

TEST_F(Nodes, AddOnTheTopLevelHasTheRootValueForParent) {
  open();
  select("02");
  add("Act_Add", "03");
  EXPECT_EQ(shape(), "01(0101 0102) 02 03");
  EXPECT_EQ(screen->editor->parent, u"Z"_s);
}

TEST_F(Nodes, AddWithNothingSelectedIsOnTheTopLevel) {
  open();
  screen->tree()->clearSelection();
  screen->tree()->setCurrentItem(nullptr);
  add("Act_Add", "03");
  EXPECT_EQ(screen->editor->parent, u"Z"_s);
  EXPECT_EQ(shape(), "01(0101 0102) 02 03");
}

TEST_F(Nodes, AddBesideAnOrphanIsOnTheTopLevel) {
  screen->data = {{u"01"_s, u"Z"_s}, {u"0901"_s, u"09"_s}};
  open();
  select("0901");
  add("Act_Add", "03");
  EXPECT_EQ(screen->editor->parent, u"Z"_s);
  EXPECT_EQ(shape(), "01 03 ?(0901)");
}

TEST_F(Nodes, CopyAddStandsUnderTheSelectedNode) {
  open();
  select("02");
  add("Act_CopyAdd", "0201");
  EXPECT_EQ(shape(), "01(0101 0102) 02(0201)");
  EXPECT_EQ(screen->editor->parent, u"02"_s);
  EXPECT_EQ(selected(), "0201");
  EXPECT_EQ(screen->AdoQry_Main.text(u"oid"_s), u"02"_s);
}

TEST_F(Nodes, EditGivesTheNodeItsNewCaption) {
  open();
  select("0102");
  add("Act_Edit", "0102");
  EXPECT_EQ(treenode::find(*screen->tree(), u"0102"_s)->text(0), u"0102 new"_s);
  EXPECT_EQ(screen->AdoQry_Main.rowCount(), 4);
  EXPECT_EQ(screen->AdoQry_Main.text(u"class_name"_s), u"new"_s);
}

TEST_F(Nodes, AFailingSaveLeavesTheTreeAsItWas) {
  open();
  select("02");
  screen->editor->failure = true;
  add("Act_CopyAdd", "0201");
  EXPECT_EQ(shape(), "01(0101 0102) 02");
  EXPECT_EQ(screen->AdoQry_Main.rowCount(), 4);
  EXPECT_EQ(messages(), std::vector<std::string>{"编号重复"});
}

TEST_F(Nodes, RefreshKeepsTheSelectedNodeAndWhatIsClosed) {
  open();
  screen->data.push_back({u"0201"_s, u"02"_s});
  screen->refresh();
  treenode::find(*screen->tree(), u"01"_s)->setExpanded(false);
  select("02");
  screen->data.insert(screen->data.begin(), {u"00"_s, u"Z"_s});
  screen->refresh();
  EXPECT_EQ(selected(), "02");
  EXPECT_FALSE(treenode::find(*screen->tree(), u"01"_s)->isExpanded());
  EXPECT_TRUE(treenode::find(*screen->tree(), u"02"_s)->isExpanded());
}

TEST_F(Nodes, TreeAndListMoveTogether) {
  open();
  select("0102");
  EXPECT_EQ(screen->AdoQry_Main.text(u"CLASS_ID"_s), u"0102"_s);
  screen->AdoQry_Main.moveTo(3);
  EXPECT_EQ(selected(), "02");
}

TEST_F(Nodes, DeletingAsksAndNamesTheChildren) {
  open();
  select("01");
  desktop().answers = {'n'};
  screen->action(u"Act_Delete"_s)->trigger();
  EXPECT_EQ(messages(), std::vector<std::string>{"是否删除【01 n01】?\r\n它有 2 个下级，下级不会一起删除。"});
  EXPECT_EQ(shape(), "01(0101 0102) 02");
}

TEST_F(Nodes, TabGoesFromTheSearchToTheTreeAndTheList) {
  open();
  const QWidget* tree = screen->tree();
  const QWidget* find = screen->findChild<QWidget*>(u"FindNode"_s);
  EXPECT_EQ(find->nextInFocusChain(), tree);
  const QWidget* next = tree->nextInFocusChain();
  while (next->focusProxy() || next->parentWidget() == tree || !(next->focusPolicy() & Qt::TabFocus))
    next = next->nextInFocusChain();
  EXPECT_EQ(next->objectName(), u"DBGridEh"_s);
}

}  // namespace
}  // namespace goodsbook
