// lanetap signals: the discovered signals of a design, their keys, nodes and order.

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include "support/TestSupport.h"

namespace {

using lanetap_test::ProgramRun;
using lanetap_test::runProgram;

const QString examples = QStringLiteral(LANETAP_SOURCE_DIR "/examples/");

QHash<QString, QJsonObject> signalsByKey(const ProgramRun& run) {
    EXPECT_EQ(run.exitCode, 0) << run.err.toStdString();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(run.out, &error);
    EXPECT_EQ(error.error, QJsonParseError::NoError) << error.errorString().toStdString();
    QHash<QString, QJsonObject> byKey;
    for (const QJsonValue& record : document["signals"].toArray()) {
        byKey.insert(record["key"].toString(), record.toObject());
    }
    return byKey;
}

QStringList firstColumn(const QByteArray& text) {
    QStringList column;
    for (const QByteArray& line : text.trimmed().split('\n')) {
        column << QString::fromUtf8(line.left(line.indexOf(' ')));
    }
    return column;
}

QJsonObject node(const QString& port, const QString& net) {
    return {{"port", port}, {"net", net}};
}

TEST(SignalsCommand, ListsEachSignalOfTheWorkedExampleUnderItsKey) {
    // Controller U1 and memory U2 each bring DQ0, the strobe pair and the clock pair, each on
    // its own designator: six signals.
    const QString design = examples + "ddr4_x8_write.json";
    const QHash<QString, QJsonObject> byKey =
        signalsByKey(runProgram({"signals", design, "--json", "--probe", "X1"}));
    QStringList keys = byKey.keys();
    keys.sort();
    EXPECT_EQ(keys, (QStringList{"CK_Ch0_U1_CK0", "CK_Ch0_U2_CK0", "DQS_Ch0_U1_DQS0",
                                 "DQS_Ch0_U2_DQS0", "DQ_Ch0_U1_DQ0", "DQ_Ch0_U2_DQ0"}));

    const QJsonObject strobe = byKey.value("DQS_Ch0_U2_DQS0");
    EXPECT_EQ(strobe["type"].toString(), "DQS");
    EXPECT_EQ(strobe["index"].toString(), "0");
    EXPECT_EQ(strobe["polarity"].toString(), "t");
    EXPECT_EQ(strobe["designator"].toString(), "U2");
    EXPECT_EQ(strobe["models"].toObject(), (QJsonObject{{"DDR_Memory", QJsonArray{"U2"}}}));
    const QJsonArray instances = strobe["instances"].toArray();
    ASSERT_EQ(instances.size(), 1);
    EXPECT_EQ(instances[0]["name"].toString(), "U2");
    EXPECT_EQ(instances[0]["cell"].toString(), "DDR_Memory");
    EXPECT_FALSE(instances[0]["single"].toBool());
    EXPECT_EQ(instances[0]["positive"].toObject(), node("DQS_t0", "n_dqs_p"));
    EXPECT_EQ(instances[0]["negative"].toObject(), node("DQS_c0", "n_dqs_n"));

    const QJsonObject data = byKey.value("DQ_Ch0_U1_DQ0");
    EXPECT_EQ(data["polarity"].toString(), "s");
    EXPECT_TRUE(data["instances"][0]["single"].toBool());
    EXPECT_EQ(data["instances"][0]["positive"].toObject(), node("DQ0", "n_dq0"));

    // The text has a header and one line per signal, by type, channel, node and index.
    const ProgramRun text = runProgram({"signals", design});
    ASSERT_EQ(text.exitCode, 0);
    EXPECT_EQ(firstColumn(text.out),
              (QStringList{"KEY", "CK_Ch0_U1_CK0", "CK_Ch0_U2_CK0", "DQ_Ch0_U1_DQ0",
                           "DQ_Ch0_U2_DQ0", "DQS_Ch0_U1_DQS0", "DQS_Ch0_U2_DQS0"}));
}

TEST(SignalsCommand, WarnsOfAPairThatLosesAHalfAndKeepsThePairThatLostItSilently) {
    const ProgramRun run =
        runProgram({"signals", examples + "half_connected_pairs.json", "--json"});
    EXPECT_EQ(run.err,
              "warning: Only one node of differential signal 'DQS_Ch0_U2_DQS0' for instance U2 is "
              "connected. Ignoring it.\n");
    const QHash<QString, QJsonObject> byKey = signalsByKey(run);
    EXPECT_FALSE(byKey.contains("DQS_Ch0_U2_DQS0"));
    ASSERT_TRUE(byKey.contains("DQS_Ch0_U2_DQS1"));
    const QJsonObject kept = byKey.value("DQS_Ch0_U2_DQS1")["instances"][0].toObject();
    EXPECT_EQ(kept["positive"].toObject(), node("DQS_t1", "n_dqs1_t"));
    EXPECT_EQ(kept["negative"].toObject(), node("", ""));
    EXPECT_TRUE(byKey.contains("DQS_Ch0_U1_DQS0")) << "the controller's pair is whole";
}

}  // namespace
