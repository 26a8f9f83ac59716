// The least program of the game's kind: a window of its size that is drawn again and again, and a recording
// whose samples go nowhere. With the argument "triangle" it draws one: what a driver needs for anything at
// all.

#include <GL/freeglut.h>
#include <portaudio.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "analysis/SpectrumRules.h"

namespace {

constexpr double sampleRateHz = rules::sampleRateHz;
constexpr unsigned long framesPerBuffer = 1024;
constexpr unsigned int pauseMicroseconds = 10000;

int ignore(const void*, void*, unsigned long, const PaStreamCallbackTimeInfo*, PaStreamCallbackFlags, void*) {
    return paContinue;
}

bool drawsTriangle = false;

void display() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    if (drawsTriangle) {
        glBegin(GL_TRIANGLES);
        glVertex2f(-0.5f, -0.5f);
        glVertex2f(0.5f, -0.5f);
        glVertex2f(0.0f, 0.5f);
        glEnd();
    }
    usleep(pauseMicroseconds);
    glutPostRedisplay();
    glutSwapBuffers();
}

}  // namespace

int main(int argc, char** argv) {
    drawsTriangle = argc > 1 && std::string(argv[1]) == "triangle";
    Pa_Initialize();
    PaStream* stream = nullptr;
    if (Pa_OpenDefaultStream(&stream, 1, 0, paFloat32, sampleRateHz, framesPerBuffer, ignore, nullptr) !=
            paNoError ||
        Pa_StartStream(stream) != paNoError) {
        std::fputs("the recording did not start\n", stderr);
        return EXIT_FAILURE;
    }
    glutInit(&argc, argv);
    glutInitWindowSize(640, 480);
    glutInitDisplayMode(GLUT_DOUBLE | GLUT_ALPHA | GLUT_DEPTH | GLUT_STENCIL);
    glutCreateWindow("");
    glutDisplayFunc(display);
    glutMainLoop();
}
