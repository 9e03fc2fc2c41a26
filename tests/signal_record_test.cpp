// Selections held on a signal record: measurements, references, compliance and write leveling.

#include <gtest/gtest.h>

#include <QSet>
#include <algorithm>

#include "catalogue/MeasurementTypes.h"
#include "discovery/SignalRecord.h"

using namespace LaneTapUI;

// Show texts, not code units, when an expectation fails.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

namespace {

struct Records {
    SignalRecord signal;
    SignalRecord strobe;
    SignalRecord clock;

    Records() {
        signal.key = "DQ_Ch0_U1_DQ3";
        signal.signalType = "DQ";
        strobe.key = "DQS_Ch0_U1_DQS0";
        clock.key = "CK_Ch0_U1_CK0";
    }
};

QSet<QString> keysOf(const SignalRecordHash& references) {
    const QStringList keys = references.keys();
    return QSet<QString>(keys.begin(), keys.end());
}

}  // namespace

TEST(SignalRecord, SetMeasurementsDropsUnknownCodesAndHandlesReferences) {
    Records r;
    r.signal.refSignals.insert("Skew", {{r.clock.key, &r.clock}});
    r.signal.setMeasurements({StrobedEye, 6, BERContour});
    const QHash<QString, int> expected{{"Strobed Eye", StrobedEye}, {"BER Contour", BERContour}};
    EXPECT_EQ(r.signal.measurements, expected);
    EXPECT_EQ(r.signal.refSignals.keys(), QStringList{"Skew"});

    r.signal.defaultReference = &r.strobe;
    r.signal.setMeasurementsWithReferences({StrobedEye, Eye, 6});
    EXPECT_EQ(r.signal.measurements.size(), 2);
    EXPECT_EQ(keysOf(r.signal.referencesOf("Strobed Eye")), QSet<QString>{r.strobe.key});
    EXPECT_EQ(keysOf(r.signal.referencesOf("Skew")), QSet<QString>{r.clock.key});
    EXPECT_FALSE(r.signal.refSignals.contains("Eye"));
}

TEST(SignalRecord, AddMeasurementKeepsReferencesOfAChosenMeasurement) {
    Records r;
    r.signal.addMeasurement("Skew");
    EXPECT_EQ(r.signal.measurements.value("Skew"), Skew);
    EXPECT_TRUE(r.signal.refSignals.contains("Skew"));
    r.signal.addReference("Skew", &r.clock);
    r.signal.addMeasurement("Skew");
    EXPECT_EQ(keysOf(r.signal.referencesOf("Skew")), QSet<QString>{r.clock.key});

    r.signal.defaultReference = &r.strobe;
    r.signal.addMeasurement("Strobed Eye");
    EXPECT_EQ(keysOf(r.signal.referencesOf("Strobed Eye")), QSet<QString>{r.strobe.key});
    r.signal.addMeasurement("Slew Rate");
    r.signal.addMeasurement("No Such Measurement");
    EXPECT_FALSE(r.signal.refSignals.contains("Slew Rate"));
    EXPECT_EQ(r.signal.measurements.value("No Such Measurement", -1), 0);
    EXPECT_TRUE(r.signal.refSignals.contains("No Such Measurement"));

    r.signal.removeMeasurement("Skew");
    EXPECT_FALSE(r.signal.measurements.contains("Skew"));
    EXPECT_FALSE(r.signal.refSignals.contains("Skew"));
}

TEST(SignalRecord, ReferenceEntriesAndTheAllReferencedTest) {
    Records r;
    r.signal.addMeasurement("Eye");
    r.signal.addReference("Eye", &r.clock);
    EXPECT_TRUE(r.signal.refSignals.isEmpty());
    EXPECT_FALSE(r.signal.allMeasurementsReferenced());

    r.signal.addReference("Skew", nullptr);
    EXPECT_TRUE(r.signal.refSignals.contains("Skew"));
    EXPECT_FALSE(r.signal.allMeasurementsReferenced());

    r.signal.addReference("Skew", &r.clock);
    r.signal.addReference("Skew", &r.clock);
    r.signal.addReference("Strobed Eye", &r.strobe);
    EXPECT_EQ(r.signal.referencesOf("Skew").size(), 1);
    EXPECT_TRUE(r.signal.allMeasurementsReferenced());

    r.signal.removeReference("Skew", nullptr);
    r.signal.removeReference("Unchosen", &r.clock);
    EXPECT_EQ(r.signal.referencesOf("Skew").size(), 1);
    EXPECT_FALSE(r.signal.refSignals.contains("Unchosen"));
    r.signal.removeReference("Skew", &r.clock);
    EXPECT_TRUE(r.signal.refSignals.contains("Skew"));
    EXPECT_FALSE(r.signal.allMeasurementsReferenced());

    r.signal.setReferences("Skew", {{r.strobe.key, &r.strobe}});
    EXPECT_TRUE(r.signal.allMeasurementsReferenced());
    r.signal.addReference("Skew", nullptr);
    EXPECT_TRUE(r.signal.referencesOf("Skew").isEmpty());
}

TEST(SignalRecord, ComplianceKeepsOneIdPerNameOnSetAndAllOnAdd) {
    // "VSEH(CK)" stands for the DDR4 ids 10333 and 10337 on a clock; 30206 is "tCKE" of CKE.
    SignalRecord clock;
    clock.signalType = "CK";
    clock.setCompliance({10333, 30206, 10337});
    EXPECT_EQ(clock.compliance.keys(), QStringList{"VSEH(CK)"});
    EXPECT_EQ(clock.compliance.values("VSEH(CK)"), QList<int>{10337});

    clock.compliance.clear();
    clock.addCompliance("VSEH(CK)", "DDR4");
    QList<int> ids = clock.compliance.values("VSEH(CK)");
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(ids, QList<int>({10333, 10337}));
    clock.removeCompliance("VSEH(CK)");
    EXPECT_TRUE(clock.compliance.isEmpty());

    SignalRecord cke;
    cke.signalType = "CKE";
    cke.setCompliance({30206, 10333});
    EXPECT_EQ(cke.compliance.values("tCKE"), QList<int>{30206});
    EXPECT_EQ(cke.compliance.size(), 1);
}

TEST(SignalRecord, InstanceNamesAndWriteLevelingReferences) {
    Records r;
    EXPECT_EQ(r.signal.instanceNames(), "");
    r.signal.instances.insert("I1", InstanceNodes());
    EXPECT_EQ(r.signal.instanceNames(), "I1");
    r.signal.instances.insert("I2", InstanceNodes());
    const QStringList names = r.signal.instanceNames().split(", ");
    EXPECT_EQ(QSet<QString>(names.begin(), names.end()), QSet<QString>({"I1", "I2"}));

    r.signal.addWlRefSignal(nullptr);
    r.signal.addWlRefSignal(&r.strobe);
    r.signal.addWlRefSignal(&r.strobe);
    EXPECT_EQ(keysOf(r.signal.wlRefSignals), QSet<QString>{r.strobe.key});
    r.signal.removeWlRefSignal(nullptr);
    EXPECT_EQ(r.signal.wlRefSignals.size(), 1);
    r.signal.removeWlRefSignal(&r.strobe);
    EXPECT_TRUE(r.signal.wlRefSignals.isEmpty());
}
