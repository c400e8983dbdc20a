// The words that kestrelctl says to people; they stand in the language table, each on a line of its own.
// Where the active language file has none of them, the English ones count that are built in.
#pragma once

#include <string>
#include <vector>

namespace kestrel::ctl {

/// By their lines in the language files.
enum class Word {
    IndexFileMissing = 721,
    NotCompatible,
    BoardIsNotThere,
    Identity,
    Revision,
    TimeLeft,
    LineIsSilent,
    NoSettingsFile,
    BehindTheEnd,
    FileIsCut,
    LineNotUnderstood,
    SumIsWrong,
    NoNumber,
    Twice,
    NoSuchParameter,
    BoardNotInHead,
    ValuesDisagree,
    Line,
    IsOwn,
    IsNoSetting,
    NotInTheFile,
    CouldNotBeRead,
    SetByPayment,
    OtherDecimals,
    NotOnThisMachine,
    OutOfRange,
    OtherIdentity,
    Reading,
    OtherMachine,
    CopyDiffers,
    BoardIsSilent,
    ReadWhole,
    ReadInPart,
    Machine,
    NothingDiffers,
    NotCompared,
    HereAndThere,
    Written,
    LeftAsItWas,
    OldOrNew,
    Refused,
    HasAnother,
    NothingToWrite,
    MayWrite,
    NothingWritten,
    IsWriting,
    LeftOut,
    WouldBeWritten,
    WasInterrupted,
    WrittenOf,
    RunAgain,
    NoDevices,
    SeveralDevices,
    CanBeOpened,
    TrafficInSum,
    ReportTitle,
    NoAlarms,
    DoctorNoise,
    DoctorSilence,
    DoctorEcho,
    DoctorSpeed,
    DoctorSpoiled,
    DoctorBoard,
    DoctorFile,
    DoctorAnswers,
    DoctorWell,
    GroupPrices,
    GroupRecipes,
    GroupTimes,
    GroupPayment,
    GroupOptions,
    GroupClock,
    GroupTemperatures,
    GroupMachine,
    GroupCounters,
    GroupAlarms
};

/// The word in the active language, with the values in the places of %1 and so on.
std::string say(Word which, const std::vector<std::string>& values = {});

/// What people call a group of the catalogue.
std::string groupName(const std::string& group);

}  // namespace kestrel::ctl
