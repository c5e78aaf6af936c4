.PHONY: help run test bench fuzz lint contact-sheet clean
.DEFAULT_GOAL := help

help:
	@echo 'make run              build Pobblewig and start it'
	@echo 'make test             build and run every test, on a virtual desktop'
	@echo 'make lint             check the formatting and look for likely faults'
	@echo 'make bench            measure'
	@echo 'make fuzz SECONDS=60  feed nonsense to what reads foreign input'
	@echo 'make contact-sheet    draw everything that there is to see into pictures'
	@echo 'make clean            remove everything that was built'

run:
	scripts/run

test:
	scripts/install-dependencies build screen test
	cmake --preset test
	cmake --build build/test
	scripts/run-tests

lint:
	scripts/lint

bench:
	scripts/bench

fuzz: SECONDS ?= 60
fuzz:
	scripts/fuzz $(SECONDS)

contact-sheet:
	scripts/contact-sheet

clean:
	rm -rf build
