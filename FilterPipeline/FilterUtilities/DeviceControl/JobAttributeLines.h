#pragma once

#include "DataModel/ValueIds.h"
#include "FeatureAccess/FeatureQuestion.h"

#include <LowLevelFacilities/WideStrings/CXString.h>

#include <string_view>

class JobQuestions;

/// The job's attributes as PJL comments, for the families that take them so. Each operation appends the lines
/// of one block; line ends differ from line to line, as the devices want them. Passwords are scrambled.
class JobAttributeLines {
public:
    /// Both must outlive this object.
    JobAttributeLines(CXString& pjl, const JobQuestions& job) : m_pjl(pjl), m_job(job) {}

    /// By FEAT_JOB_TYPE. A delayed job has no lines here.
    void AddJobType(const CXString& jobName);
    void AddSecureJob();
    /// With a password that stands as it is.
    void AddSecureJob(const CXString& password);
    /// When to print; no line where the time cannot be read.
    void AddPrintAfter();
    /// attribute: the name of the time, which comes from `path` and is moved into the day to come.
    void AddTime(std::wstring_view attribute, const FeaturePath& path);
    void AddStartSheet();
    void AddAccounting();
    void AddContentOrientation(bool isPortrait, std::wstring_view lineEnd);
    /// ECONOMODE, by FEAT_TONER_SAVER.
    void AddTonerSaver();

    /// Who pays for a job: what the accounting lines say.
    struct Account {
        bool hasUser = false;
        CXString user;
        CXString account; // for the network system
        CXString general; // for the standard system's accounts
        CXString group;
        DataModelIds::tagValueEnum type{};
    };
    void AddAccounting(const Account& account);

private:
    void AddSavedJob(const CXString& jobName);

    CXString& m_pjl;
    const JobQuestions& m_job;
};
