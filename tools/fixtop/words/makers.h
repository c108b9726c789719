// SPDX-License-Identifier: Apache-2.0
#pragma once

// Makers of the words, one file each.

#include <memory>

#include "word.h"

namespace fixtop {

std::unique_ptr<Word> MakeAttrs();
std::unique_ptr<Word> MakeCd();
std::unique_ptr<Word> MakeCheckMap();
std::unique_ptr<Word> MakeClasses();
std::unique_ptr<Word> MakeCollectAdd();
std::unique_ptr<Word> MakeCollectDiff();
std::unique_ptr<Word> MakeCollectList();
std::unique_ptr<Word> MakeCollectRead();
std::unique_ptr<Word> MakeCollectRemove();
std::unique_ptr<Word> MakeCollectWatch();
std::unique_ptr<Word> MakeCollectWrite();
std::unique_ptr<Word> MakeComplete();
std::unique_ptr<Word> MakeDemo();
std::unique_ptr<Word> MakeDiff();
std::unique_ptr<Word> MakeExplain();
std::unique_ptr<Word> MakeFind();
std::unique_ptr<Word> MakeGet();
std::unique_ptr<Word> MakeHelp();
std::unique_ptr<Word> MakeHold();
std::unique_ptr<Word> MakeLs();
std::unique_ptr<Word> MakePath();
std::unique_ptr<Word> MakePublish();
std::unique_ptr<Word> MakePwd();
std::unique_ptr<Word> MakeQuit();
std::unique_ptr<Word> MakeReport();
std::unique_ptr<Word> MakeSave();
std::unique_ptr<Word> MakeSet();
std::unique_ptr<Word> MakeShell();
std::unique_ptr<Word> MakeSolve();
std::unique_ptr<Word> MakeStreams();
std::unique_ptr<Word> MakeTable();
std::unique_ptr<Word> MakeTree();
std::unique_ptr<Word> MakeUndo();
std::unique_ptr<Word> MakeUnits();
std::unique_ptr<Word> MakeWatch();

}  // namespace fixtop
