#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>
#include <QStringView>
#include <QVarLengthArray>
#include <string>
#include <vector>

#include "host/Database.h"

// Readers and writers of the text forms that instance parameters take. Every value is a byte
// string in the host's database. Readers never fail to the caller: a missing parameter or text of
// the wrong form reads as an empty or zero value, or as what was parsed before the failure.
// Writers lose the value silently when the host refuses it.
namespace LaneTapUI {

// "DQ0 0 2,DQ1 3,": key to ids.
using IntListMap = QHash<QString, QList<int>>;
// "DQ0 1 DQS0_t,": signal key to measurement id to reference names.
using ReferenceMap = QHash<QString, QHash<int, QStringList>>;
// "DQS0 DQ0 DQ1,": key to names.
using StringListMap = QHash<QString, QStringList>;

// Splits on runs of white space, dropping empty parts.
QStringList splitOnWhiteSpace(const QString& text);
// The same parts as views into `text`, for readers that make strings of only some of them.
using WordViews = QVarLengthArray<QStringView, 16>;
void splitOnWhiteSpace(QStringView text, WordViews& words);
// A word as QStringView::toInt reads it in base 10, without a copy for a plain run of digits.
int wordToInt(QStringView word);

// The stored bytes, or an empty string.
std::string readParamString(const db::ParamIterConst& params, const std::string& name);
// The same, decoded as UTF-8, the form the writers store.
QString readParamText(const db::ParamIterConst& params, const std::string& name);
// Leading white space is skipped and the longest numeric prefix counts; no number or a number out
// of range gives 0.
int readParamInt(const db::ParamIterConst& params, const std::string& name);
double readParamDouble(const db::ParamIterConst& params, const std::string& name);
// Items end at each ","; a final "," adds no empty item, two in a row do.
QStringList readParamStringList(const db::ParamIterConst& params, const std::string& name);
// Entries end at each ","; an entry is split on white space and entries with too few parts are
// skipped. A token that is no number counts as 0. A repeated key replaces the earlier list.
IntListMap readParamIntListMap(const db::ParamIterConst& params, const std::string& name);
// Needs key and id; names of a repeated key and id are appended.
ReferenceMap readParamReferenceMap(const db::ParamIterConst& params, const std::string& name);
// Needs a key; names of a repeated key are appended.
StringListMap readParamStringListMap(const db::ParamIterConst& params, const std::string& name);

// The list and map readers over a value already read: a caller may read on one thread and take
// the text apart on another. A stored list as the netlist reads it: views into `text`, the value
// decoded once.
struct ListEntries {
    QString text;
    std::vector<QStringView> items;
};
ListEntries parseListEntries(const std::string& value);
IntListMap parseIntListMap(const std::string& value);
// A stored key-to-ids map as the netlist reads it: keys are views into `text`, the value decoded
// once, and most lists of ids are held in place. It walks in the order of the IntListMap of the
// same value.
struct IntListViews {
    QString text;
    QHash<QStringView, QVarLengthArray<int, 4>> lists;
};
IntListViews parseIntListViews(const std::string& value);
ReferenceMap parseReferenceMap(const std::string& value);

// The text of a string list: every item followed by ","; the empty list is the empty text.
QString stringListText(const QStringList& items);

void writeParamString(db::ParamIter& params, const std::string& name, const QString& text);
// Every item followed by ","; the empty list is the empty text.
void writeParamStringList(db::ParamIter& params, const std::string& name, const QStringList& items);
// Booleans are stored through this as 0 or 1.
void writeParamInt(db::ParamIter& params, const std::string& name, int value);

}  // namespace LaneTapUI
