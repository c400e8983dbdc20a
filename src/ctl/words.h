// The words that kestrelctl says to people; they have language files of their own, beside those of the table.
// Where the active language has no such file, the English ones count that are built in.
#pragma once

#include <string>
#include <vector>

namespace kestrel::ctl {

/// By their lines in the files.
enum class Word {
    IndexFileMissing = 1,
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
    OutputLost,
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

/// Takes the words of a language, such as "Deutsch".
void loadWords(const std::string& language);

/// The word in the active language, with the values in the places of %1 and so on.
std::string say(Word which, const std::vector<std::string>& values = {});

/// What people call a group of the catalogue.
std::string groupName(const std::string& group);

}  // namespace kestrel::ctl
