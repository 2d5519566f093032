#pragma once

#include "inspect/report/PagePart.h"

namespace consolidator::inspect {

/// The style sheet and the script of the page that the command "report" writes.
extern const PageCode pageStyle;
extern const PageCode pageScript;

/// The pieces of its HTML. The build makes them of the files in the folder page/.
namespace part {

extern const PagePart<2> head;
extern const PagePart<0> styleBegin;
extern const PagePart<0> styleEnd;
extern const PagePart<0> bodyBegin;
extern const PagePart<0> contentsBegin;
extern const PagePart<2> contentsKernel;
extern const PagePart<1> contentsMore;
extern const PagePart<0> contentsEnd;
extern const PagePart<2> title;
extern const PagePart<1> verdictSound;
extern const PagePart<1> verdictUnsound;
extern const PagePart<2> notComplete;
extern const PagePart<1> newerVersion;
extern const PagePart<0> factsBegin;
extern const PagePart<2> fact;
extern const PagePart<3> factWithNote;
extern const PagePart<1> projectFact;
extern const PagePart<0> factsEnd;
extern const PagePart<0> findingsBegin;
extern const PagePart<0> noFindings;
extern const PagePart<0> findingsTable;
extern const PagePart<6> finding;
extern const PagePart<2> findingsMore;
extern const PagePart<0> findingsTableEnd;
extern const PagePart<0> sectionEnd;
extern const PagePart<1> sectionsBegin;
extern const PagePart<1> barBegin;
extern const PagePart<4> barPiece;
extern const PagePart<0> barEnd;
extern const PagePart<0> sectionsTable;
extern const PagePart<5> sectionRow;
extern const PagePart<1> sectionsMore;
extern const PagePart<0> sectionsTableEnd;
extern const PagePart<0> instancesBegin;
extern const PagePart<0> instancesNone;
extern const PagePart<2> instancesMore;
extern const PagePart<0> treeBegin;
extern const PagePart<0> treeEnd;
extern const PagePart<1> treeBranch;
extern const PagePart<0> treeBranchEnd;
extern const PagePart<1> treeLeafBegin;
extern const PagePart<2> treeLeafKernel;
extern const PagePart<1> treeLeafName;
extern const PagePart<0> treeLeafEnd;
extern const PagePart<0> map;
extern const PagePart<0> kernelsBegin;
extern const PagePart<0> kernelsNone;
extern const PagePart<2> kernelsMore;
extern const PagePart<1> kernelOpen;
extern const PagePart<1> kernelClosed;
extern const PagePart<3> kernelSummary;
extern const PagePart<0> kernelEnd;
extern const PagePart<0> kernelEmpty;
extern const PagePart<2> listTitle;
extern const PagePart<0> instancesTable;
extern const PagePart<0> variablesTable;
extern const PagePart<0> conditionsTable;
extern const PagePart<0> registersTable;
extern const PagePart<0> bramsTable;
extern const PagePart<1> rowBegin;
extern const PagePart<1> nameCell;
extern const PagePart<1> cell;
extern const PagePart<1> codeCell;
extern const PagePart<1> numberCell;
extern const PagePart<0> locationsBegin;
extern const PagePart<0> locationsEnd;
extern const PagePart<0> coverageBegin;
extern const PagePart<3> coveragePiece;
extern const PagePart<1> coverageEnd;
extern const PagePart<0> rowEnd;
extern const PagePart<0> tableEnd;
extern const PagePart<2> folded;
extern const PagePart<2> blockBegin;
extern const PagePart<0> blockEnd;
extern const PagePart<1> sourceBegin;
extern const PagePart<2> sourceLine;
extern const PagePart<2> sourceLineBegin;
extern const PagePart<1> sourceCondition;
extern const PagePart<0> sourceLineEnd;
extern const PagePart<0> sourceGap;
extern const PagePart<0> sourceEnd;
extern const PagePart<1> bodyEnd;
extern const PagePart<0> scriptBegin;
extern const PagePart<0> scriptEnd;

}  // namespace part

}  // namespace consolidator::inspect
