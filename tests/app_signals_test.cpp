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
    QHash<QString, QJsonObject> byKey;
    for (const QJsonValue& record : QJsonDocument::fromJson(run.out)["signals"].toArray()) {
        byKey.insert(record["key"].toString(), record.toObject());
    }
    return byKey;
}

TEST(SignalsCommand, ListsEachSignalOfTheWorkedExampleUnderItsKey) {
    // Controller U1 and memory U2 each bring DQ0, the strobe pair and the clock pair, each on its
    // own designator: six signals, by type, channel, node and index.
    const QString design = examples + "ddr4_x8_write.json";
    const ProgramRun text = runProgram({"signals", design});
    EXPECT_EQ(text.exitCode, 0);
    EXPECT_EQ(
        text.out.toStdString(),
        R"(KEY              TYPE  INDEX  CHANNEL  DESIGNATOR  NODE  POLARITY  INSTANCES                         MODELS
CK_Ch0_U1_CK0    CK    0      Ch0      U1          pin   t         U1 CK_t0=n_ck_p CK_c0=n_ck_n      DDR_Controller:U1
CK_Ch0_U2_CK0    CK    0      Ch0      U2          pin   t         U2 CK_t0=n_ck_p CK_c0=n_ck_n      DDR_Memory:U2
DQ_Ch0_U1_DQ0    DQ    0      Ch0      U1          pin   s         U1 DQ0=n_dq0                      DDR_Controller:U1
DQ_Ch0_U2_DQ0    DQ    0      Ch0      U2          pin   s         U2 DQ0=n_dq0                      DDR_Memory:U2
DQS_Ch0_U1_DQS0  DQS   0      Ch0      U1          pin   t         U1 DQS_t0=n_dqs_p DQS_c0=n_dqs_n  DDR_Controller:U1
DQS_Ch0_U2_DQS0  DQS   0      Ch0      U2          pin   t         U2 DQS_t0=n_dqs_p DQS_c0=n_dqs_n  DDR_Memory:U2
)");
    const QHash<QString, QJsonObject> byKey =
        signalsByKey(runProgram({"signals", design, "--json", "--probe", "X1"}));
    EXPECT_EQ(byKey.size(), 6);
    EXPECT_EQ(byKey.value("DQS_Ch0_U2_DQS0"), QJsonDocument::fromJson(R"({"channel": "Ch0",
        "designator": "U2", "index": "0", "key": "DQS_Ch0_U2_DQS0", "models": {"DDR_Memory": ["U2"]},
        "instances": [{"cell": "DDR_Memory", "name": "U2", "single": false,
                       "negative": {"net": "n_dqs_n", "port": "DQS_c0"},
                       "positive": {"net": "n_dqs_p", "port": "DQS_t0"}}],
        "nodeLabel": "", "nodeName": "U2", "pin": "DQS_t0", "polarity": "t", "signalId": "DQS_t0",
        "type": "DQS"})")
                                                  .object());
    EXPECT_EQ(byKey.value("DQ_Ch0_U1_DQ0")["instances"][0]["negative"].toObject(),
              (QJsonObject{{"port", ""}, {"net", ""}}));
    EXPECT_TRUE(byKey.value("DQ_Ch0_U1_DQ0")["instances"][0]["single"].toBool());
}

}  // namespace
