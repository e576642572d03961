# Building, storing and reading clips.
# n log n: a block may cost log 4000 / log 1000, log 16000 / log 1000 times as much.
ratioOf "a block added to a clip, of 4,000" "fresh addBlock 4000" "fresh addBlock 1000" 1.2 ns "of 1,000"
ratioOf "a block added to a clip, of 16,000" "fresh addBlock 16000" "fresh addBlock 1000" 1.4 ns "of 1,000"
growthOf "blocks added to a clip" "fresh addBlock" 1000 4000 16000
ratioOf "a clip exported, a block of 16,000" "fresh exportClip 16000" "fresh exportClip 1000" 2 ns "of 1,000"
ratioOf "a clip imported, a block of 16,000" "fresh importClip 16000" "fresh importClip 1000" 2 ns "of 1,000"
