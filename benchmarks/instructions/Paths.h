#pragma once

class QString;

// The hot paths, each group in a source file of its own; each path is counted for so many
// repetitions. Main thread only.

/// Into the queue, and out of it.
void countQueue(int repetitions);

/// From a change of the receipt to its message in the queue.
void countChanges(const QString &pluginFile, int repetitions);

/// From the queue to the display's answer.
void countDelivery(int repetitions);

/// From the display's request to the plug-in's answer.
void countRequests(const QString &pluginFile, int repetitions);
