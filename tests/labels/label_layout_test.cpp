// Files with layouts of labels: what they say, and what is told of a wrong one.
#include "host/print/label_layout.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStringEncoder>
#include <QTemporaryDir>

#include "host/print/label_layouts.h"

using namespace Qt::StringLiterals;

namespace goodsbook {
namespace {

const QString head = u"名称 \"测试\"\n纸张 A4\n标签 70 37\n列数 3\n行数 8\n"_s;

std::string errorOf(const QString& text) {
  try {
    readLabelLayout(text, u"my.label"_s);
  } catch (const std::runtime_error& error) {
    return error.what();
  }
  return {};
}

TEST(LabelLayouts, AreReadLineByLine) {
  const LabelLayout layout = readLabelLayout(
      u"\ufeff# 说明\n名称 “我的 # 标签”\r\n纸张 100 80\n标签 30 20.5 # 宽 高\n列数 3\n行数 2\n边距 1 2\n间距 3 4\n\n"
      u"文字 1 2 20 5 \"{名称} / {单位}\" 字号 9 最小字号 6 粗体 居中\n条码 1 8 28 10 无数字 居左\n线 0 19 30 0.2\n"_s,
      u"my.label"_s);
  EXPECT_EQ(layout.name, u"我的 # 标签"_s);
  EXPECT_EQ(layout.paper, QSizeF(100, 80));
  EXPECT_EQ(layout.label, QSizeF(30, 20.5));
  EXPECT_EQ(layout.perSheet(), 6);
  EXPECT_EQ(layout.corner(0), QPointF(1, 2));
  EXPECT_EQ(layout.corner(4), QPointF(1 + 33, 2 + 24.5));
  ASSERT_EQ(layout.items.size(), 3U);
  EXPECT_EQ(layout.items[0].place, QRectF(1, 2, 20, 5));
  EXPECT_EQ(layout.items[0].size, 9);
  EXPECT_EQ(layout.items[0].least, 6);
  EXPECT_TRUE(layout.items[0].bold);
  EXPECT_TRUE(layout.items[0].alignment & Qt::AlignHCenter);
  EXPECT_FALSE(layout.items[1].digits);
  EXPECT_EQ(layout.items[2].kind, LabelItem::Kind::Line);
}

TEST(LabelLayouts, TellFileLineAndWhatIsWrong) {
  const auto at = [](int line, const char* what) {
    return "标签样式 my.label 第 " + std::to_string(line) + " 行：" + what + "。";
  };
  struct Case {
    QString text;
    std::string error;
  };
  const Case cases[] = {
      {head + u"纸 A4\n"_s,
       at(6, "不认识“纸”，可用：名称、纸张、标签、列数、行数、边距、间距、文字、条码、线")},
      {head + u"文字 1 2 3\n"_s, at(6, "“文字”后面缺少内容")},
      {head + u"文字 1 2 3 4 \"{颜色}\"\n"_s,
       at(6, "没有“颜色”这个内容，可用：编号、条码、名称、规格、单位、售价、会员价、产地、公司")},
      {head + u"文字 1 2 3 4 \"{名称\"\n"_s, at(6, "“{”后面少了“}”")},
      {head + u"文字 1 2 3 4 \"名称\n"_s, at(6, "少了一个引号")},
      {head + u"文字 1 2 3 4 名称 字号 大\n"_s, at(6, "“字号”后面应是数字，现在是“大”")},
      {head + u"文字 1 2 3 4 名称 红色\n"_s,
       at(6, "不认识“红色”，可用：字号、最小字号、粗体、居左、居中、居右，条码还有无数字")},
      {head + u"文字 1 2 3 4 名称 字号 6 最小字号 7\n"_s, at(6, "最小字号大于字号")},
      {head + u"文字 1 2 3 0 名称\n"_s, at(6, "数字 0 超出范围")},
      {head + u"文字 60 2 20 4 名称\n"_s, at(6, "内容超出标签（70 × 37 毫米）")},
      {head + u"条码 1 1 40 10\n文字 1 9 40 4 名称\n"_s, at(7, "内容与第 6 行的条码重叠")},
      {QString(head).replace(u"行数 8"_s, u"行数 1.5"_s), at(5, "“行数”后面应是整数")},
      {QString(head).replace(u"列数 3"_s, u"列数 4"_s) + u"文字 1 2 3 4 名称\n"_s,
       at(3, "标签共宽 280 毫米，纸宽只有 210 毫米")},
      {head + u"边距 0 10\n文字 1 2 3 4 名称\n"_s, at(3, "标签共高 306 毫米，纸高只有 297 毫米")},
      {head + u"间距 1 2 3\n"_s, at(6, "不认识“3”")},
      {head + u"纸张 A5\n"_s, at(6, "“纸张”已写在第 2 行")},
      {head + u"边距 1 1\n间距 1 1\n边距 0 0\n"_s, at(8, "“边距”已写在第 6 行")},
      {head, at(6, "标签上没有内容：缺少“文字”或“条码”")},
      {u"纸张 A4\n标签 1 1\n文字 0 0 1 1 名称"_s, at(3, "缺少“名称”")},
      {u"名称 甲\n标签 1 1\n文字 0 0 1 1 名称"_s, at(3, "缺少“纸张”")},
      {u"名称 甲\n纸张 A4\n文字 0 0 1 1 名称"_s, at(3, "缺少“标签”")},
      {{}, at(1, "缺少“名称”")},
  };
  for (const Case& each : cases) EXPECT_EQ(errorOf(each.text), each.error) << each.text.toStdString();
}

TEST(LabelLayouts, ATextWithoutItsValuesIsLeftOut) {
  LabelItem item;
  item.pattern = u"会员价 {会员价} / {单位}"_s;
  LabelRow row;
  EXPECT_EQ(item.text(row), QString());
  row[LabelField::Unit] = u"瓶"_s;
  EXPECT_EQ(item.text(row), u"会员价  / 瓶"_s);
  item.pattern = u"零售价"_s;
  EXPECT_EQ(item.text(row), u"零售价"_s);
  item.pattern = u"{名称}"_s;
  row[LabelField::Name] = u"{产地}"_s;  // a value is no pattern
  EXPECT_EQ(item.text(row), u"{产地}"_s);
}

TEST(LabelLayouts, TheUsersOwnComeBesideTheShippedOnesOrInTheirPlace) {
  const QTemporaryDir folder;
  const std::vector<LabelLayoutFile> shipped = labelLayouts(folder.path());
  ASSERT_EQ(shipped.size(), 6U);
  const QString copy = copyLabelLayout(shipped[0], folder.path());
  EXPECT_EQ(copy, folder.filePath(u"a4-3x8.label"_s));
  EXPECT_EQ(copyLabelLayout(shipped[0], folder.path()), folder.filePath(u"a4-3x8-2.label"_s));
  QFile file(copy);
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QString text = QString::fromUtf8(file.readAll());
  file.close();
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QString(text).replace(u"A4 不干胶 3 × 8（70 × 37 毫米）"_s, u"我的标签"_s).toUtf8());
  file.close();
  QFile broken(folder.filePath(u"broken.label"_s));
  ASSERT_TRUE(broken.open(QIODevice::WriteOnly));
  broken.write("名称 坏\n纸张 B9\n");
  broken.close();
  const std::vector<LabelLayoutFile> all = labelLayouts(folder.path());
  QStringList names;
  for (const LabelLayoutFile& each : all) names << each.name;
  EXPECT_EQ(all.size(), 8U);
  EXPECT_TRUE(names.contains(u"我的标签"_s));
  EXPECT_TRUE(names.contains(u"broken.label"_s));
  EXPECT_EQ(names.count(u"A4 不干胶 3 × 8（70 × 37 毫米）"_s), 1);  // the second copy
  const auto wrong = std::ranges::find(all, u"broken.label"_s, &LabelLayoutFile::name);
  EXPECT_EQ(wrong->error.toStdString(), "标签样式 " + folder.filePath(u"broken.label"_s).toStdString() +
                                            " 第 2 行：“纸张”后面应是数字，现在是“B9”。");
}

TEST(LabelLayouts, AFileInAnotherEncodingIsTold) {
  const QTemporaryDir folder;
  const auto put = [&](const QString& name, const QByteArray& bytes) {
    QFile file(folder.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  };
  const QString text = head + u"文字 1 2 30 4 \"{名称}\"\n"_s;
  const auto utf16 = [&text](QStringConverter::Encoding encoding, QStringConverter::Flag flag) {
    QStringEncoder encode(encoding, flag);
    return QByteArray(encode(text));
  };
  using Converter = QStringConverter;
  put(u"gbk.label"_s, "\xc3\xfb\xb3\xc6 \xbc\xd7\n");
  put(u"utf16-bom.label"_s, utf16(Converter::Utf16LE, Converter::Flag::WriteBom));
  put(u"utf16-le.label"_s, utf16(Converter::Utf16LE, Converter::Flag::Default));
  put(u"utf16-be.label"_s, utf16(Converter::Utf16BE, Converter::Flag::WriteBom));
  put(u"cut.label"_s, text.toUtf8() + "# \xe5\x90");
  put(u"good.label"_s, text.toUtf8());
  put(u"marked.label"_s, "\xef\xbb\xbf" + text.toUtf8());
  int wrong = 0;
  for (const LabelLayoutFile& each : labelLayouts(folder.path())) {
    if (each.shipped) continue;
    const QString name = QFileInfo(each.path).fileName();
    const bool good = name == u"good.label"_s || name == u"marked.label"_s;
    wrong += !good;
    EXPECT_EQ(each.error.toStdString(),
              good ? "" : "标签样式 " + each.path.toStdString() + " 不是 UTF-8 编码：请用 UTF-8 保存。");
  }
  EXPECT_EQ(wrong, 5);
}

}  // namespace
}  // namespace goodsbook
